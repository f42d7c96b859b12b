// SPDX-License-Identifier: MIT
#pragma once

#include <pane/interface/PreferencePane.h>

#include <QObject>

#include <memory>

class Interface;
class TerminationSignals;

/// The settings pane's principal class: loads the interface, whose controllers do the rest.
class BlipsyPref final : public QObject, public PreferencePane
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BlipsyPref)
    Q_PLUGIN_METADATA(IID "com.blipsy.PreferencePane/1.1")
    Q_INTERFACES(PreferencePane)

public:
    explicit BlipsyPref(QObject* parent = nullptr);
    ~BlipsyPref() override;

    void setBundlePath(const QString& path) override;
    void setPictured() override;
    void openDocument(const QString& path) override;
    QWidget* loadMainView() override;
    void willUnselect() override;
    QStringList tabNames() const override;
    bool selectTab(const QString& name) override;
    int carryOut(const DocumentTask& task) override;

private:
    void endWhenAsked();

    bool m_isPictured = false;
    std::unique_ptr<Interface> m_interface;
    std::unique_ptr<TerminationSignals> m_termination;
};

// SPDX-License-Identifier: MIT
#pragma once

#include <core/BYGlobals.h>
#include <prefs/OptionsTab.h>

#include <QTemporaryDir>

#include <NotificationRecorder.h>

#include <memory>

/// What is stored under @p key; null for nothing.
PropertyList::Value setting(const QString& key);

/// The options tab, anew for each test: without settings, over a bundle with a stand-in helper.
class OptionsFixture : public QObject
{
    Q_OBJECT

protected:
    /// The tab as it is when the pane opens with the settings of this moment.
    void open();

    const Ui::OptionsTab& form() const { return m_tab->form(); }

    /// The cell with this title among the trigger characters.
    QCheckBox* trigger(const QString& title) const;

    BYController& controller() { return m_tab->controller(); }

    QTemporaryDir m_bundle;
    std::unique_ptr<OptionsTab> m_tab;
    NotificationRecorder m_recorder;

private Q_SLOTS:
    void initTestCase();
    void init();
};

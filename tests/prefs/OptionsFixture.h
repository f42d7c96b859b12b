#pragma once

#include "ui_OptionsTab.h"

#include <core/BYGlobals.h>
#include <prefs/BYController.h>

#include <QTemporaryDir>

#include <NotificationRecorder.h>

#include <memory>

/// What is stored under @p key; null for nothing.
PropertyList::Value setting(const QString& key);

/// The options page with its controller, anew for each test: without settings, over a bundle with a stand-in helper.
class OptionsFixture : public QObject
{
    Q_OBJECT

protected:
    /// The page as it is when the pane opens with the settings of this moment.
    void open();

    QTemporaryDir m_bundle;
    std::unique_ptr<QWidget> m_page;
    Ui::OptionsTab m_form;
    std::unique_ptr<BYController> m_controller;
    NotificationRecorder m_recorder;

private Q_SLOTS:
    void initTestCase();
    void init();
};

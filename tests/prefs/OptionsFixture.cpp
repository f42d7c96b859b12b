#include "OptionsFixture.h"

#include <core/SharedNames.h>
#include <platform/controls/Matrix.h>
#include <platform/desktop/Bundle.h>

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

void OptionsFixture::initTestCase()
{
    const QString program = m_bundle.path() + u"/Contents/BlipsyMenu.app/Contents/MacOS/BlipsyMenu"_s;
    QVERIFY(QDir().mkpath(QFileInfo(program).path()));
    QVERIFY(QDir().mkpath(m_bundle.path() + u"/Contents/Resources"_s));
    QVERIFY(QFile::copy(QStringLiteral(STAND_IN_HELPER), program));
    QVERIFY(QFile::copy(QFINDTESTDATA("../../resources/PTKeyCodes.plist"),
        m_bundle.path() + u"/Contents/Resources/PTKeyCodes.plist"_s));
    Bundle::registerBundle(paneBundleIdentifier, m_bundle.path());
}

void OptionsFixture::init()
{
    for (const QString& key :
        {SettingKey::idleTalkIntervalPref, SettingKey::triggersSet, SettingKey::noTriggers, SettingKey::menuPref,
            SettingKey::arrowPref, u"Add a Clipping"_s, u"Edit Clippings"_s, u"Pause/Resume"_s}) {
        BYGlobals::storeSetting({}, key);
    }
    open();
    BYGlobals::sendNotification(u"test begins"_s);
    QTRY_VERIFY(m_recorder.names().endsWith(u"test begins"_s));
    m_recorder.clear();
}

void OptionsFixture::open()
{
    m_page = std::make_unique<QWidget>();
    m_form.setupUi(m_page.get());
    m_controller = std::make_unique<BYController>();
    m_controller->idleTalkIntervalText = m_form.idleTalkIntervalText;
    m_controller->idleTalkIntervalStepper = m_form.idleTalkIntervalStepper;
    m_controller->menuPref = m_form.menuPref;
    m_controller->triggersPrefsMatrix = m_form.triggersPrefsMatrix;
    m_controller->onOffRadioButton = m_form.onOffRadioButton;
    m_controller->addHotKeyButton = m_form.addHotKeyButton;
    m_controller->editHotKeyButton = m_form.editHotKeyButton;
    m_controller->pauseHotKeyButton = m_form.pauseHotKeyButton;
    m_controller->awakeFromNib();
    const auto* const controller = m_controller.get();
    connect(m_form.triggersPrefsMatrix, &Matrix::actionTriggered, controller,
        [this](Matrix* sender) { m_controller->enterTriggerPref(sender); });
    connect(m_form.menuPrefsMatrix, &Matrix::actionTriggered, controller,
        [this](Matrix* sender) { m_controller->enterMenuPref(sender); });
    m_page->show();
}

PropertyList::Value setting(const QString& key)
{
    return BYGlobals::retrieveUntypedObjectFromUserDefaults(key);
}

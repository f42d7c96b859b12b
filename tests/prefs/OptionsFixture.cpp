// SPDX-License-Identifier: MIT
#include "OptionsFixture.h"

#include <core/SharedNames.h>
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
    Bundle::registerBundle(m_bundle.path());
}

void OptionsFixture::init()
{
    for (const QString& key : {Settings::idleTalkIntervalPref.key, Settings::triggersSet.key, Settings::noTriggers.key,
             Settings::menuPref.key, Settings::arrowPref.key, u"Add a Clipping"_s, u"Edit Clippings"_s,
             u"Pause/Resume"_s}) {
        BYGlobals::storeSetting({}, key);
    }
    open();
    BYGlobals::sendNotification(u"test begins"_s);
    QTRY_VERIFY(m_recorder.names().endsWith(u"test begins"_s));
    m_recorder.clear();
}

void OptionsFixture::open()
{
    m_tab = std::make_unique<OptionsTab>();
    controller().awakeFromNib();
    m_tab->show();
}

QCheckBox* OptionsFixture::trigger(const QString& title) const
{
    const auto cells = form().triggersPrefsMatrix->findChildren<QCheckBox*>();
    const auto found = std::ranges::find(cells, title, &QCheckBox::text);
    return found == cells.end() ? nullptr : *found;
}

PropertyList::Value setting(const QString& key)
{
    return BYGlobals::retrieveUntypedObjectFromUserDefaults(key);
}

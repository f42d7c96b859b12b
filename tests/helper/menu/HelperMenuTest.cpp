// SPDX-License-Identifier: MIT
#include <core/Settings.h>
#include <helper/menu/HelperMenu.h>
#include <helper/menu/PhraseListing.h>
#include <platform/desktop/Bundle.h>

#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;

namespace {

/// An item of a menu as the desktop sees it.
struct Item
{
    int id = 0;
    QString label;
    bool isVisible = true;
};

Item itemFrom(const QDBusArgument& argument, std::vector<Item>& found)
{
    Item item;
    QVariantMap properties;
    argument.beginStructure();
    argument >> item.id >> properties;
    item.label = properties.value(u"label"_s).toString();
    item.isVisible = properties.value(u"visible"_s, true).toBool();
    if (item.isVisible && !item.label.isEmpty()) {
        found.push_back(item);
    }
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        itemFrom(child.variant().value<QDBusArgument>(), found);
    }
    argument.endArray();
    argument.endStructure();
    return item;
}

} // namespace

class HelperMenuTest final : public QObject
{
    Q_OBJECT

private:
    QString m_icon;

    /// Calls an object of this very process, so it must not be waited for without the event loop.
    QVariantList call(
        const QString& path, const QString& interface, const QString& member, const QVariantList& arguments) const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(m_icon, path, interface, member);
        message.setArguments(arguments);
        const QDBusPendingCall pending = QDBusConnection::sessionBus().asyncCall(message);
        return QTest::qWaitFor([&pending] { return pending.isFinished(); }, 20'000) ? pending.reply().arguments()
                                                                                    : QVariantList();
    }

    QVariant property(const QString& name) const
    {
        const QVariantList reply = call(u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
            {u"org.kde.StatusNotifierItem"_s, name});
        return reply.isEmpty() ? QVariant() : reply.at(0).value<QDBusVariant>().variant();
    }

    QVariantList callMenu(const QString& member, const QVariantList& arguments) const
    {
        return call(
            property(u"Menu"_s).value<QDBusObjectPath>().path(), u"com.canonical.dbusmenu"_s, member, arguments);
    }

    QString toolTip() const
    {
        const auto argument = property(u"ToolTip"_s).value<QDBusArgument>();
        argument.beginStructure();
        argument.asVariant(); // the icon's name
        argument.asVariant(); // its picture
        const QString title = argument.asVariant().toString();
        argument.asVariant(); // the text below it
        argument.endStructure();
        return title;
    }

    std::vector<Item> items() const
    {
        std::vector<Item> found;
        const QVariantList layout = callMenu(u"GetLayout"_s, {0, -1, QStringList()});
        if (layout.size() == 2) {
            itemFrom(layout.at(1).value<QDBusArgument>(), found);
        }
        return found;
    }

    QStringList labels() const
    {
        QStringList result;
        for (const Item& item : items()) {
            result.append(item.label);
        }
        return result;
    }

    void choose(const QString& label) const
    {
        for (const Item& item : items()) {
            if (item.label == label) {
                callMenu(u"Event"_s, {item.id, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
                return;
            }
        }
        QFAIL(qPrintable(label));
    }

private Q_SLOTS:

    void menuIsToldToTheDesktopThatComesLate()
    {
        Bundle::registerBundle(QStringLiteral(BLIPSY_TEST_BUNDLE));
        const PropertyList::ArrayPointer phrases = Array::create();
        for (int i = 0; i < 100; ++i) {
            const QString phrase = QChar(u'a' + i / 50) + QString::number(i);
            phrases->append(Dictionary::create({{PhraseKey::phrase, phrase}}));
        }
        HelperMenu menu;
        QCOMPARE(Settings::arrowPref.value(), u"▾"_s);
        menu.show();
        menu.showPhrases(std::make_shared<const PhraseListing>(phrases, Settings::menuPref.value(), 0));
        menu.setNotice(HelperMenu::Notice::HotKeys, u"keys"_s, u"why keys"_s);
        menu.setNotice(HelperMenu::Notice::Typing, u"typing"_s, u"why typing"_s);

        QProcess desktop;
        desktop.start(QStringLiteral(STATUS_NOTIFIER_WATCHER), QStringList());
        QTRY_VERIFY_WITH_TIMEOUT(desktop.canReadLine(), 20'000);
        m_icon = QString::fromLatin1(desktop.readLine()).trimmed();
        QTRY_COMPARE(labels(), QStringList({u"typing"_s, u"keys"_s, u"Pause"_s, u"Add a Clipping…"_s,
                                   u"Edit Clippings…"_s, u"A"_s, u"B"_s, u"About Blipsy"_s, u"Quit Blipsy"_s}));

        const QSignalSpy pause(&menu, &HelperMenu::pauseRequested);
        const QSignalSpy explained(&menu, &HelperMenu::explanationRequested);
        const QSignalSpy quit(&menu, &HelperMenu::quitRequested);
        choose(u"Pause"_s);
        QTRY_COMPARE(pause, QList<QVariantList>{{true}});
        menu.setPaused(true);
        QCOMPARE(Settings::arrowPref.value(), u"▿"_s);
        QTRY_VERIFY(labels().contains(u"Resume"_s));
        choose(u"Resume"_s);
        QTRY_COMPARE(pause.size(), 2);
        QCOMPARE(toolTip(), u"Blipsy is paused\ntyping\nkeys"_s);
        choose(u"typing"_s);
        QTRY_COMPARE(explained, QList<QVariantList>({{u"typing"_s, u"why typing"_s}}));
        choose(u"Quit Blipsy"_s);
        QTRY_COMPARE(quit.size(), 1);

        // A submenu has its phrases once the desktop is about to show it.
        const QSignalSpy chosen(&menu, &HelperMenu::phraseChosen);
        QVERIFY(!labels().contains(u"b77"_s));
        for (const Item& item : items()) {
            callMenu(u"AboutToShow"_s, {item.id});
        }
        QTRY_VERIFY(labels().contains(u"b75 … b80"_s));
        for (const Item& item : items()) {
            callMenu(u"AboutToShow"_s, {item.id});
        }
        QTRY_VERIFY(labels().contains(u"b77"_s));
        choose(u"b77"_s);
        QTRY_COMPARE(chosen.size(), 1);
        QVERIFY(chosen.at(0).at(0).value<PropertyList::DictionaryPointer>() == phrases->at(77).dictionary());
        desktop.kill();
        desktop.waitForFinished();
    }
};

int main(int argc, char** argv)
{
    // The offscreen platform has no status icons.
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication application(argc, argv);
    HelperMenuTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "HelperMenuTest.moc"

// SPDX-License-Identifier: MIT
#include <platform/storage/FileLock.h>
#include <platform/storage/Preferences.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

#include <DataTable.h>
#include <Files.h>

using namespace Qt::StringLiterals;
using PropertyList::Value;

namespace {

const QString domain = u"com.example.shared"_s;

/// Another process replaces the domain's file.
void replaceFile(const QByteArray& bytes)
{
    const QString path = Preferences::filePath(domain);
    Files::write(path + u".new"_s, bytes);
    QFile::remove(path);
    QVERIFY(QFile::rename(path + u".new"_s, path));
}

QByteArray plist(const QString& key, const Value& value)
{
    return PropertyList::write(PropertyList::Dictionary::create({{key, value}}));
}

QByteArray stored()
{
    return Files::contents(Preferences::filePath(domain));
}

} // namespace

class PreferencesTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { replaceFile(plist(u"Before"_s, u"there"_s)); }

    void writeMergesWithWhatAnotherProcessWrote()
    {
        QCOMPARE(Preferences::copyValue(u"Before"_s, domain).string(), u"there");
        Preferences::setValue(u"Ours"_s, u"set"_s, domain);
        replaceFile(plist(u"Theirs"_s, u"written"_s));
        QVERIFY(Preferences::synchronize(domain));
        const auto root = PropertyList::read(stored())->dictionary();
        QCOMPARE(root->keys(), (QStringList{u"Ours"_s, u"Theirs"_s}));
        Preferences::setValue(u"Ours"_s, {}, domain);
        QVERIFY(Preferences::synchronize(domain));
        QVERIFY(!PropertyList::read(stored())->dictionary()->contains(u"Ours"));
    }

    void readSeesAWriteOfAnotherProcess()
    {
        replaceFile(plist(u"Key"_s, u"1"_s));
        QCOMPARE(Preferences::copyValue(u"Key"_s, domain).string(), u"1");
        replaceFile(plist(u"Key"_s, u"2"_s));
        QCOMPARE(Preferences::copyValue(u"Key"_s, domain).string(), u"2");
        QFile::remove(Preferences::filePath(domain));
        QVERIFY(Preferences::copyValue(u"Key"_s, domain).isNull());
    }

    void containersAreCopies()
    {
        auto list = PropertyList::Array::create();
        list->append(u"first"_s);
        Preferences::setValue(u"List"_s, list, domain);
        list->append(u"later"_s);
        Preferences::copyValue(u"List"_s, domain).array()->append(u"elsewhere"_s);
        QVERIFY(Preferences::synchronize(domain));
        QCOMPARE(Preferences::copyValue(u"List"_s, domain).array()->size(), 1);
    }

    void brokenFileChangesNothingAndStays_data()
    {
        const DataTable<QByteArray> row("bytes");
        row("empty", {});
        row("garbage", QByteArray("\x00\xff\x17 garbage", 11));
        row("truncated", plist(u"Key"_s, u"value"_s).chopped(20));
        row("no dictionary", PropertyList::write(PropertyList::Array::create()));
    }

    void brokenFileChangesNothingAndStays()
    {
        QFETCH(const QByteArray, bytes);
        QVERIFY(!Preferences::copyValue(u"Before"_s, domain).isNull());
        replaceFile(bytes);
        const QRegularExpression line(u"^cannot read settings .*com\\.example\\.shared\\.plist: .+"_s);
        QTest::ignoreMessage(QtWarningMsg, line);
        QCOMPARE(Preferences::copyValue(u"Before"_s, domain).string(), u"there");
        Preferences::setValue(u"Waiting"_s, 1, domain);
        QVERIFY(!Preferences::synchronize(domain));
        QCOMPARE(stored(), bytes);
        QCOMPARE(Preferences::copyValue(u"Waiting"_s, domain).integerValue(), 1);

        replaceFile(plist(u"Before"_s, u"repaired"_s));
        QVERIFY(Preferences::synchronize(domain));
        QCOMPARE(Preferences::copyValue(u"Before"_s, domain).string(), u"repaired");
        QVERIFY(stored().contains("Waiting"));
    }

    void lockOfAHungProcessDelaysNothingAndLosesNothing()
    {
        std::optional<FileLock> lock(Preferences::filePath(domain) + u".lock"_s);
        QVERIFY(!lock->lockWithin(std::chrono::milliseconds(0)));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"locked by another process"_s));
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 5; ++i) {
            Preferences::setValue(u"Count"_s, i, domain);
            QVERIFY(!Preferences::synchronize(domain));
        }
        QCOMPARE_LT(timer.elapsed(), 100);
        QCOMPARE(Preferences::copyValue(u"Count"_s, domain).integerValue(), 4);
        lock.reset();
        QTRY_VERIFY(stored().contains("Count"));
    }

    void searchListGoesFromHostToSuiteToGlobal()
    {
        const QString host = QCoreApplication::applicationName();
        UserDefaults& defaults = UserDefaults::standardUserDefaults();
        QVERIFY(defaults.objectForKey(u"Before"_s).isNull());
        defaults.addSuiteNamed(domain);
        const QStringList order{u"global"_s, domain, host};
        for (const QString& layer : order) {
            Preferences::setValue(u"Layer"_s, layer, layer);
            defaults.synchronize();
            QCOMPARE(defaults.objectForKey(u"Layer"_s).string(), layer);
        }
        QCOMPARE(defaults.objectForKey(u"Before"_s).string(), u"there");
    }
};

QTEST_GUILESS_MAIN(PreferencesTest)
#include "PreferencesTest.moc"

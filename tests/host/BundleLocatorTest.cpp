// SPDX-License-Identifier: MIT
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <host/BundleLocator.h>

#include <array>
#include <list>
#include <thread>

using namespace Qt::StringLiterals;
using Files::contents;
using Files::write;

namespace {

QString documentIn(const QString& bundle)
{
    return bundle + u"/Contents/Resources/default.blipsy"_s;
}

QString infoIn(const QString& bundle)
{
    return bundle + u"/Contents/Info.plist"_s;
}

void putBundle(const QString& path, const QByteArray& version, const QByteArray& document)
{
    write(infoIn(path), version);
    write(path + u"/Contents/MacOS/BlipsyPref.so"_s, version);
    write(documentIn(path), document);
}

} // namespace

class BundleLocatorTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_original = m_folder.filePath(u"original"_s);
    QString m_copy = m_folder.filePath(u"data/copy"_s);

private Q_SLOTS:

    void init()
    {
        QVERIFY(QDir(m_folder.filePath(u"data"_s)).removeRecursively());
        putBundle(m_original, "new", "factory");
    }

    void updateKeepsTheUsersDocument_data()
    {
        // The documents in the copy, in the old and in the new one as an update that was killed may leave them.
        const DataTable<QByteArray, QByteArray, QByteArray> row("inPlace", "outdated", "fresh");
        row("first start", {}, {}, {});
        row("outdated copy", "user's", {}, {});
        row("killed while copying", "user's", {}, "fac");
        row("killed between the renames", {}, "user's", "factory");
        row("killed before the end", "factory", "user's", {});
    }

    void updateKeepsTheUsersDocument()
    {
        const auto [inPlace, outdated, fresh] = currentRow<QByteArray, QByteArray, QByteArray>();
        for (const auto& [suffix, document] : {std::pair(u""_s, inPlace), {u".old"_s, outdated}, {u".new"_s, fresh}}) {
            if (!document.isEmpty()) {
                putBundle(m_copy + suffix, document == "factory" ? "new" : "old", document);
            }
        }
        QVERIFY(BundleLocator::updateCopy(m_original, m_copy));
        QCOMPARE(contents(documentIn(m_copy)), inPlace.isEmpty() && outdated.isEmpty() ? "factory" : "user's");
        QCOMPARE(contents(infoIn(m_copy)), "new");
        QCOMPARE(QDir(m_folder.filePath(u"data"_s)).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), {u"copy"_s});
    }

    void startsAtOnceWaitForEachOther()
    {
        putBundle(m_copy, "old", "user's");
        std::array<bool, 3> results{};
        std::list<std::jthread> starts;
        for (bool& result : results) {
            starts.emplace_back([&] { result = BundleLocator::updateCopy(m_original, m_copy); });
        }
        starts.clear();
        QVERIFY(std::all_of(results.begin(), results.end(), [](bool result) { return result; }));
        QCOMPARE(contents(documentIn(m_copy)), "user's");
    }
};

QTEST_GUILESS_MAIN(BundleLocatorTest)
#include "BundleLocatorTest.moc"

// SPDX-License-Identifier: MIT
#include "HelperProgram.h"

#include <core/Settings.h>

#include <QTemporaryDir>
#include <QTest>

#include <Files.h>
#include <ProcessMemory.h>
#include <Programs.h>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;

/// What a core dump of the running helper tells of what was typed. Mostly waits, so it runs beside the other tests.
class PrivacyTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void secretIsInNoCoreDumpTwoMinutesLater()
    {
        const QTemporaryDir folder;
        const QString secret = u"xylophonezebra"_s;
        const QString phrase = u"marmaladequay"_s;
        const auto entry = Dictionary::create({{PhraseKey::phrase, phrase}, {PhraseKey::plainText, u"Yes."_s}});
        const auto root = Dictionary::create({{DocumentKey::clippings, Array::create({entry})}});
        Files::write(folder.filePath(u"test.blipsy"_s), PropertyList::write(root));
        Settings::defaultFilePath.store(folder.filePath(u"test.blipsy"_s));
        HelperProgram helper;
        const qint64 process = helper.process.processId();

        const auto isRemembered = [&] {
            return Programs::run(u"xdotool"_s, {u"type"_s, phrase + u' ' + secret}) &&
                   QTest::qWaitFor([&] { return ProcessMemory::contains(process, secret); }, 1000);
        };
        QTRY_VERIFY_WITH_TIMEOUT(isRemembered(), 20'000);
        constexpr auto twoMinutes = 120'000;
        QTest::qWait(twoMinutes);

        const QString dump = folder.filePath(u"core"_s);
        QProcess dumper;
        dumper.start(u"gcore"_s, {u"-o"_s, dump, QString::number(process)});
        QVERIFY(dumper.waitForFinished(90'000));
        QFile core(dump + u'.' + QString::number(process));
        QVERIFY2(core.open(QIODevice::ReadOnly), dumper.readAllStandardError().constData());
        const QByteArrayView bytes(reinterpret_cast<const char*>(core.map(0, core.size())), core.size());
        QVERIFY(bytes.data() != nullptr);
        // It is whole: what the document says is there.
        QVERIFY(ProcessMemory::holds(bytes, phrase));
        QVERIFY(!ProcessMemory::holds(bytes, secret));
    }
};

QTEST_GUILESS_MAIN(PrivacyTest)
#include "PrivacyTest.moc"

// SPDX-License-Identifier: MIT
#include <core/Changes.h>
#include <core/SoundsDocument.h>

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <DataTable.h>
#include <Files.h>
#include <NotificationRecorder.h>

#include <functional>
#include <random>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;

class ChangesTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(u"test.blipsy"_s);
    SoundsDocument& m_document = SoundsDocument::shared();

    QByteArray stored() const { return Files::contents(m_path); }

    QByteArray current() const { return PropertyList::write(m_document.root()); }

    void change(int row, const QString& text) const
    {
        m_document.phrases()->at(row).dictionary()->insert(PhraseKey::phrase, text);
    }

private Q_SLOTS:

    /// Of some 20 pieces.
    void init()
    {
        const auto phrases = Array::create();
        for (int i = 0; i < 1000; ++i) {
            phrases->append(Dictionary::create(
                {{PhraseKey::phrase, QString::number(i)}, {PhraseKey::plainText, QString(1000, u'x')}}));
        }
        QDir().mkpath(m_folder.path());
        Files::write(m_path, PropertyList::write(Dictionary::create({{DocumentKey::clippings, phrases}})));
        m_document.setPath(m_path);
        m_document.load();
    }

    void cleanup() { Changes::finish(); }

    void burstIsWrittenTogetherAndThenToldInOrder()
    {
        NotificationRecorder recorder;
        QByteArrayList storedWhenTold;
        QObject context;
        DistributedNotificationCenter::defaultCenter().addObserver(
            &context, {}, helperIdentifier, [&](const auto&) { storedWhenTold.append(stored()); });
        const QByteArray before = stored();
        change(1, u"first"_s);
        Changes::saveDocument({u"a"_s});
        Changes::tell(u"b"_s);
        change(999, u"second"_s);
        Changes::saveDocument({u"c"_s});
        QCOMPARE(stored(), before);
        QTRY_COMPARE(recorder.names(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
        QCOMPARE(storedWhenTold, QByteArrayList(3, current()));
    }

    /// Whatever the one before has come to.
    void changeWhileAnotherIsWrittenIsWrittenAndTold()
    {
        std::mt19937 random;
        int told = 0;
        constexpr int changes = 100;
        for (int row = 0; row < changes; ++row) {
            const QString text = u"change %1."_s.arg(row);
            change(row, text);
            Changes::saveDocument({});
            m_document.afterSaving([&told, text, this] { told += stored().contains(text.toUtf8()) ? 1 : 0; });
            for (auto turns = random() % 8; turns > 0; --turns) {
                QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
                QThread::usleep(random() % 1000);
            }
        }
        Changes::finish();
        QCOMPARE(told, changes);
        QCOMPARE(stored(), current());
    }

    void leavingTheDocumentWritesIt_data()
    {
        const DataTable<std::function<void()>> row("leave");
        row("another path", [this] { m_document.setPath(m_folder.filePath(u"other.blipsy"_s)); });
        row("loaded again", [this] { m_document.load(); });
        row("written at once", [this] { m_document.save(); });
    }

    void leavingTheDocumentWritesIt()
    {
        QFETCH(const std::function<void()>, leave);
        for (const bool isRunning : {false, true}) {
            const QString text = u"change, running: %1"_s.arg(isRunning);
            change(7, text);
            Changes::saveDocument({});
            QTest::qWait(isRunning ? 2 : 0);
            leave();
            QVERIFY(stored().contains(text.toUtf8()));
            m_document.setPath(m_path);
        }
    }

    void failedWriteIsToldAndTheNextSucceeds()
    {
        NotificationRecorder recorder;
        QVERIFY(QDir(m_folder.path()).removeRecursively());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^cannot write .*test\\.blipsy: "_s));
        change(3, u"unwritten"_s);
        Changes::saveDocument({u"a"_s});
        QTRY_COMPARE(recorder.names(), QStringList{u"a"_s});
        QVERIFY(QDir().mkpath(m_folder.path()));
        Changes::saveDocument({});
        Changes::finish();
        QCOMPARE(stored(), current());
    }

    /// What XML cannot express is in the binary form, as before.
    void controlCharacterIsWritten()
    {
        change(3, QString(QChar(1)));
        Changes::saveDocument({});
        Changes::finish();
        QCOMPARE(stored(), current());
        QVERIFY(stored().startsWith("bplist00"));
    }
};

QTEST_GUILESS_MAIN(ChangesTest)
#include "ChangesTest.moc"

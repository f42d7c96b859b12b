// SPDX-License-Identifier: MIT
#include "DocumentFixture.h"

#include <core/BYGlobals.h>
#include <core/PhraseList.h>
#include <core/SharedNames.h>
#include <phrases/HelperListener.h>

#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <NotificationRecorder.h>

using namespace Qt::StringLiterals;

using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;

class HelperListenerTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_document = std::make_unique<DocumentFixture>(QList<PropertyList::Value>{phraseEntry(u"a"_s, u""_s)});
        BYGlobals::setDefaultFilePath(m_document->path(u"test.blipsy"_s));
        BYGlobals::fillArray();
        m_did.clear();
        m_listener = std::make_unique<HelperListener>(HelperListener::Actions{
            .reloadDocument =
                [this](const std::function<void()>& load) {
                    load();
                    m_did.append(u"reload"_s);
                },
            .showPhrase = [this](const QString& phrase) { m_did.append(u"show "_s + phrase); },
            .editNewRow = [this] { m_did.append(u"edit"_s); },
            .keepRich = [this] { m_did.append(u"rich"_s); },
            .showHelperOff = [this] { m_did.append(u"off"_s); },
        });
    }

    void cleanup()
    {
        m_listener.reset();
        editEntryInProgress = false;
    }

    void eachNotificationHasItsEffectAndAnswer_data()
    {
        const DataTable<QString, QString, QString, bool> row("name", "phrase", "did", "isAnswered");
        row("rich text kept", u"Keep Rich"_s, {}, u"rich"_s, true);
        row("helper ends", u"ByeBye"_s, {}, u"off"_s, true);
        row("phrase wanted", u"ScrollToAbb"_s, u"a"_s, u"show a"_s, true);
        row("no phrase said", u"ScrollToAbb"_s, {}, u"show com.blipsy.BlipsyMenu"_s, true);
        row("phrase added by the helper", u"NewRowAddedViaMenu"_s, u"a"_s, u"reload, show a"_s, true);
        row("row added by another pane", u"NewRowAdded"_s, {}, {}, true);
        row("row removed by another pane", u"RowRemoved"_s, {}, {}, true);
        row("settings changed", u"Preferences Changed"_s, {}, {}, true);
        row("unknown", u"Whatever"_s, {}, {}, true);
        row("the answer itself", u"RefreshMenu"_s, {}, {}, false);
        row("accessibility is off", u"AXApiIsOff"_s, {}, {}, false);
    }

    void eachNotificationHasItsEffectAndAnswer()
    {
        const auto [name, phrase, did, isAnswered] = currentRow<QString, QString, QString, bool>();
        const QByteArray before = Files::contents(BYGlobals::defaultFilePath());
        NotificationRecorder recorder;
        m_listener->hear(named(name, phrase));
        QCOMPARE(m_did.join(u", "_s), did);
        m_listener->hear({name, u"com.example.other"_s, {}});
        QCOMPARE(m_did.join(u", "_s), did);
        BYGlobals::sendNotification(NotificationName::accessibilityIsOff);
        QTRY_VERIFY(recorder.names().contains(NotificationName::accessibilityIsOff));
        QCOMPARE(recorder.names().count(NotificationName::refreshMenu), isAnswered ? 1 : 0);
        QCOMPARE(Files::contents(BYGlobals::defaultFilePath()), before);
    }

    void typingIntoACellIsKnown()
    {
        m_listener->hear(named(NotificationName::turnExpansionOff));
        QVERIFY(editEntryInProgress);
        m_listener->hear(named(NotificationName::turnExpansionOn));
        QVERIFY(!editEntryInProgress);
    }

    void whatMovesRowsWaitsWhileTheyAreHeld()
    {
        const DictionaryPointer asked = m_document->entry(0);
        m_document->writePhrases({phraseEntry(u"new"_s, u""_s), phraseEntry(u"a"_s, u""_s)});
        {
            const HelperListener::RowHold outer(*m_listener);
            {
                const HelperListener::RowHold inner(*m_listener);
                m_listener->hear(named(NotificationName::newRowAddedViaMenu, u"new"_s));
                m_listener->hear(named(NotificationName::scrollToAbb, u"a"_s));
                m_listener->hear(named(NotificationName::byeBye));
            }
            QCoreApplication::processEvents();
            QCOMPARE(m_did, QStringList(u"off"_s));
            // What is asked about is of the old list; the change goes to what it is in the new one.
            const Phrase now = m_listener->upToDateEntry(asked);
            QVERIFY(now && now != asked && now == m_document->entry(0));
            QCOMPARE(m_listener->upToDateEntry(now), now);
        }
        QCOMPARE(m_did.join(u", "_s), u"off, reload"_s);
        QCoreApplication::processEvents();
        QCOMPARE(m_did.join(u", "_s), u"off, reload, show new, show a"_s);
    }

    void ownRowChangesAreFinishedOnce()
    {
        BYGlobals::clippingsArray()->append(phraseEntry(u"own"_s, u""_s));
        m_listener->announceAddition(m_document->entry(1));
        m_listener->announceRemoval();
        for (int time = 0; time < 2; ++time) {
            m_listener->hear(named(NotificationName::newRowAdded));
            QCOMPARE(m_did, QStringList(u"edit"_s));
        }
        QCOMPARE(phrasesIn(m_document->storedPhrases()), QStringList(u"a"_s));
        m_listener->hear(named(NotificationName::rowRemoved));
        QCOMPARE(phrasesIn(m_document->storedPhrases()), (QStringList{u"a"_s, u"own"_s}));
    }

    void ownRowOutlivesTheHelpers_data()
    {
        const DataTable<QStringList, QString, QStringList> row("ofTheFile", "document", "found");
        row("not written yet", {u"a"_s, u"new"_s}, u"test.blipsy"_s, {u"a"_s, u"new"_s, u"own"_s});
        row("one of its phrase stands there", {u"a"_s, u"new"_s, u"own"_s}, u"test.blipsy"_s,
            {u"a"_s, u"new"_s, u"own"_s});
        row("of the document used before", {u"b"_s}, u"other.blipsy"_s, {u"b"_s});
    }

    void ownRowOutlivesTheHelpers()
    {
        const auto [ofTheFile, document, found] = currentRow<QStringList, QString, QStringList>();
        BYGlobals::clippingsArray()->append(phraseEntry(u"own"_s, u""_s));
        m_listener->announceAddition(m_document->entry(1));
        QList<PropertyList::Value> phrases;
        for (const QString& phrase : ofTheFile) {
            phrases.append(phraseEntry(phrase, u""_s));
        }
        m_document->writePhrases(phrases, document);
        if (document != u"test.blipsy") {
            BYGlobals::setDefaultFilePath(m_document->path(document));
            BYGlobals::fillArray();
        }
        m_listener->hear(named(NotificationName::newRowAddedViaMenu, u"new"_s));
        QCOMPARE(phrasesIn(BYGlobals::clippingsArray()), found);
    }

private:
    static DistributedNotification named(const QString& name, const QString& phrase = {})
    {
        const DictionaryPointer userInfo =
            phrase.isNull() ? DictionaryPointer() : Dictionary::create({{PhraseKey::phrase, phrase}});
        return {name, BYGlobals::appID(), userInfo};
    }

    QStringList m_did;
    std::unique_ptr<DocumentFixture> m_document;
    std::unique_ptr<HelperListener> m_listener;
};

QTEST_GUILESS_MAIN(HelperListenerTest)
#include "HelperListenerTest.moc"

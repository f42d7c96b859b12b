// SPDX-License-Identifier: MIT
#include <core/Settings.h>
#include <helper/HelperDocument.h>
#include <helper/menu/PhraseAddition.h>
#include <helper/menu/PhraseMenu.h>

#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <Files.h>

#include <ctime>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using PropertyList::Array;
using PropertyList::Dictionary;

namespace {

/// Of this thread.
std::chrono::nanoseconds processorTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// Knows which event has kept it from the next one for longest.
class MeteredApplication final : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        const auto start = processorTime();
        const bool isDone = QApplication::notify(receiver, event);
        longest = std::max(longest, processorTime() - start);
        return isDone;
    }

    std::chrono::nanoseconds longest{};
};

} // namespace

class HelperDocumentTest final : public QObject
{
    Q_OBJECT

private:
    const QString m_path = QDir::tempPath() + u"/long.blipsy"_s;
    QByteArray m_bytes;
    QMenu m_menu;
    PhraseMenu* m_phrases = new PhraseMenu(&m_menu, m_menu.addSeparator());
    HelperDocument m_document;
    QSignalSpy m_reloaded{&m_document, &HelperDocument::reloaded};
    QSignalSpy m_settled{&m_document, &HelperDocument::settled};

    bool hasSettled() { return !m_settled.isEmpty() || m_settled.wait(60'000); }

    bool isFound(const QString& phrase) const { return m_document.index()->longestAtEndOf(phrase, {}).length > 1; }

private Q_SLOTS:

    void initTestCase()
    {
        const PropertyList::ArrayPointer phrases = Array::create();
        for (int i = 0; i < 20'000; ++i) {
            const QString phrase = QChar(u'a' + i % 26) + QString::number(i);
            phrases->append(Dictionary::create({{PhraseKey::phrase, phrase}, {PhraseKey::soundFilepath, u"/Pop"_s}}));
        }
        m_bytes = PropertyList::write(Dictionary::create({{DocumentKey::clippings, phrases}}));
        Settings::defaultFilePath.store(m_path);
        connect(&m_document, &HelperDocument::reloaded, m_phrases,
            [this] { m_phrases->fill(m_document.listing(), MenuTitle::Drawn::ByDesktop); });
    }

    void init()
    {
        m_settled.clear();
        Files::write(m_path, m_bytes);
        m_document.reload();
        QVERIFY(hasSettled());
        m_reloaded.clear();
        m_settled.clear();
    }

    void nothingIsHeldUpAndNothingIsKept()
    {
        auto* const application = static_cast<MeteredApplication*>(qApp);
        for (int i = 0; i < 3; ++i) {
            const std::weak_ptr before = m_document.index();
            Files::write(m_path, m_bytes);
            m_settled.clear();
            application->longest = {};
            QMetaObject::invokeMethod(&m_document, &HelperDocument::reload, Qt::QueuedConnection);
            QVERIFY(hasSettled());
            QCOMPARE_LT(application->longest.count(), std::chrono::nanoseconds(10ms).count());
            QTRY_VERIFY(before.expired());
        }
        QCOMPARE(m_reloaded.size(), 3);
    }

    void requestsAreCombinedAndThoseForNothingNew()
    {
        m_document.reload();
        QCOMPARE(m_settled.size(), 1);
        Settings::sortPref.store(1);
        m_settled.clear();
        for (int i = 0; i < 5; ++i) {
            m_document.reload();
        }
        QVERIFY(hasSettled());
        QCOMPARE(m_reloaded.size(), 1);
        Settings::sortPref.store(0);
    }

    void phraseAddedMeanwhileIsNotLost()
    {
        Files::write(m_path, QByteArray(m_bytes).replace(">b1<", ">theirs<"));
        m_document.reload();
        QVERIFY(PhraseAddition::add(u"ours"_s, u"text"_s));
        m_document.reload();
        QVERIFY(hasSettled());
        QVERIFY(isFound(u"ours"_s) && isFound(u"theirs"_s));
        QVERIFY(PropertyList::write(SoundsDocument::shared().root()) == Files::contents(m_path));
    }
};

int main(int argc, char** argv)
{
    MeteredApplication application(argc, argv);
    HelperDocumentTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "HelperDocumentTest.moc"

// SPDX-License-Identifier: MIT
#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <platform/controls/Matrix.h>
#include <platform/richtext/Rtfd.h>
#include <platform/richtext/TextView.h>
#include <texts/EditSession.h>

#include <QGridLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>

using namespace Qt::StringLiterals;

using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;

class EditSessionTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        const QString path = m_folder.filePath(u"test.blipsy"_s);
        const auto phrases = Array::create({
            u"no entry"_s,
            Dictionary::create({{PhraseKey::phrase, u"a"_s}, {PhraseKey::soundFilepath, u"plain"_s}}),
            Dictionary::create({{PhraseKey::phrase, u"b"_s}, {PhraseKey::soundFilepath, u"beside"_s},
                {PhraseKey::rtfd, QByteArray("{\\rtf1 \\b rich}")}}),
            Dictionary::create({{PhraseKey::phrase, u"c"_s}}),
        });
        Files::write(path, PropertyList::write(Dictionary::create({{DocumentKey::clippings, phrases}})));
        BYGlobals::setDefaultFilePath(path);
        BYGlobals::fillArray();

        m_window = std::make_unique<QWidget>();
        m_text = new TextView(m_window.get());
        m_save = new QPushButton(m_window.get());
        m_formatting = new QWidget(m_window.get());
        m_choice = new Matrix(m_window.get());
        auto* const cells = new QGridLayout(m_choice);
        for (int column = 0; column < 2; ++column) {
            auto* const cell = new QRadioButton(m_choice);
            cell->setProperty("tag", column);
            cells->addWidget(cell, 0, column);
        }
        m_window->show();
        m_session = std::make_unique<EditSession>(EditSession::Views{
            .text = m_text, .save = m_save, .plainOrRich = m_choice, .textFormatting = m_formatting});
        m_text->setString(u"before"_s);
        m_session->setDirty(true);
    }

    void loadedRowShowsInAllViews_data()
    {
        const DataTable<int, QString, bool, bool> row("row", "text", "isRich", "isEditable");
        row("broken entry", 0, u""_s, false, false);
        row("plain", 1, u"plain"_s, false, true);
        row("rich", 2, u"rich"_s, true, true);
        row("without a text", 3, u"before"_s, false, true);
        row("none", -1, u""_s, false, false);
    }

    void loadedRowShowsInAllViews()
    {
        const auto [row, text, isRich, isEditable] = currentRow<int, QString, bool, bool>();
        m_session->load(row);
        QCOMPARE(m_text->string(), text);
        QCOMPARE(m_text->isReadOnly(), !isEditable);
        for (const QWidget* view : std::initializer_list<QWidget*>{m_text, m_save, m_choice, m_formatting}) {
            QCOMPARE(view->isVisible(), row >= 0);
        }
        QVERIFY(!m_session->isDirty() && !m_save->isEnabled());
        if (isEditable) {
            QCOMPARE(m_text->isRichText(), isRich);
            QCOMPARE(m_choice->selectedColumn(), isRich ? 1 : 0);
            QCOMPARE(m_formatting->isEnabled(), isRich);
        }
    }

    void typingAttributesCountInRichTextOnly()
    {
        for (const int row : {1, 2}) {
            m_session->load(row);
            m_session->typingAttributesDidChange();
            QCOMPARE(m_session->isDirty(), row == 2);
            QCOMPARE(m_save->isEnabled(), row == 2);
        }
    }

    void saversDifferInKeyAndInWhatTheyAsk_data()
    {
        const DataTable<bool, bool, bool> row("byButton", "isRichText", "isRichChosen");
        row("question, plain", false, false, true);
        row("question, rich", false, true, false);
        row("button, plain", true, true, false);
        row("button, rich", true, false, true);
    }

    void saversDifferInKeyAndInWhatTheyAsk()
    {
        const auto [byButton, isRichText, isRichChosen] = currentRow<bool, bool, bool>();
        m_text->setRichText(isRichText);
        m_choice->setState_atRow_column(true, 0, isRichChosen ? 1 : 0);
        const DictionaryPointer entry = Dictionary::create({{PhraseKey::rtfd, u"old"_s}});
        if (byButton) {
            m_session->saveByButton(entry);
        } else {
            m_session->saveAfterQuestion(entry);
        }
        QCOMPARE(entry->value(PhraseKey::plainText).string(), byButton ? u"before"_s : QString());
        QCOMPARE(entry->value(PhraseKey::soundFilepath).string(), byButton ? QString() : u"before"_s);
        const bool isStoredRich = byButton ? isRichChosen : isRichText;
        QCOMPARE(entry->contains(PhraseKey::rtfd), isStoredRich);
        QCOMPARE(isStoredRich && entry->value(PhraseKey::rtfd).data().contains("before"), isStoredRich);
        QCOMPARE(m_session->isDirty(), !byButton);
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<QWidget> m_window;
    TextView* m_text = nullptr;
    QPushButton* m_save = nullptr;
    QWidget* m_formatting = nullptr;
    Matrix* m_choice = nullptr;
    std::unique_ptr<EditSession> m_session;
};

QTEST_MAIN(EditSessionTest)
#include "EditSessionTest.moc"

// SPDX-License-Identifier: MIT
#include <core/BYGlobals.h>
#include <helper/menu/ClippingAddition.h>
#include <platform/typist/SelectionWindow.h>

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <NotificationRecorder.h>
#include <xcb/xcb.h>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;

namespace {

QDialog* dialog()
{
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const found = qobject_cast<QDialog*>(widget); found && found->isVisible()) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

class AddClippingTest final : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    ClippingAddition m_addition;

    void write(const QStringList& phrases) const
    {
        const PropertyList::ArrayPointer list = Array::create();
        for (const QString& phrase : phrases) {
            list->append(Dictionary::create({{PhraseKey::phrase, phrase}}));
        }
        Files::write(m_path, PropertyList::write(Dictionary::create({{DocumentKey::clippings, list}})));
    }

    /// The phrases on the disk, with their texts.
    QStringList stored() const
    {
        QStringList result;
        const DictionaryPointer root = PropertyList::read(Files::contents(m_path))->dictionary();
        for (const PropertyList::Value& entry : *root->value(DocumentKey::clippings).array()) {
            const DictionaryPointer phrase = entry.dictionary();
            result.append(
                phrase->value(PhraseKey::phrase).string() + u':' + phrase->value(PhraseKey::plainText).string());
        }
        return result;
    }

    void typePhrase(const QString& phrase)
    {
        m_addition.begin();
        QTRY_VERIFY(dialog());
        QTest::keyClicks(dialog()->findChild<QLineEdit*>(), phrase);
    }

private Q_SLOTS:

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"test.blipsy"_s);
        write({u"a"_s, u"c"_s});
        BYGlobals::setDefaultFilePath(m_path);
        BYGlobals::fillArray();
        QGuiApplication::clipboard()->setText(u"the clipboard's"_s);
        QGuiApplication::clipboard()->setText(u"the text"_s, QClipboard::Selection);
    }

    void cleanup()
    {
        if (QDialog* const open = dialog()) {
            QTest::keyClick(open, Qt::Key_Escape);
        }
        QVERIFY(!dialog());
    }

    void phraseIsAddedAndTold()
    {
        NotificationRecorder recorder;
        const QSignalSpy asking(&m_addition, &ClippingAddition::asking);
        const QSignalSpy added(&m_addition, &ClippingAddition::added);
        typePhrase(u" b "_s);
        QTest::keyClick(dialog()->findChild<QLineEdit*>(), Qt::Key_Return);
        QVERIFY(!dialog());
        QCOMPARE(stored(), QStringList({u"a:"_s, u"b:the text"_s, u"c:"_s}));
        QCOMPARE(added.size(), 1);
        QCOMPARE(asking, QList<QVariantList>({{true}, {false}}));
        QTRY_COMPARE(recorder.names(), QStringList{u"NewRowAddedViaMenu"_s});
        QCOMPARE(recorder.last(u"NewRowAddedViaMenu"_s).userInfo->value(u"Phrase").string(), u"b"_s);
    }

    void textIsTheSelectionElseTheClipboards_data()
    {
        const DataTable<QString, bool, QString> row("selected", "isSilent", "text");
        row("selection", u"Äß漢字"_s, false, u"Äß漢字"_s);
        row("clipboard", {}, false, u"the clipboard's"_s);
        row("program that hangs", {}, true, {});
    }

    void textIsTheSelectionElseTheClipboards()
    {
        const auto [selected, isSilent, text] = currentRow<QString, bool, QString>();
        QGuiApplication::clipboard()->setText(selected, QClipboard::Selection);
        const auto silent = SelectionWindow::create();
        if (isSilent) {
            xcb_set_selection_owner(silent->server(), silent->id(), XCB_ATOM_PRIMARY, XCB_CURRENT_TIME);
            QCOMPARE(silent->ownerOf(XCB_ATOM_PRIMARY), silent->id());
        }
        m_addition.begin();
        m_addition.begin();
        QTRY_VERIFY(dialog());
        const auto* const field = dialog()->findChild<QPlainTextEdit*>();
        QCOMPARE(field->toPlainText(), text);
        QCOMPARE(!field->placeholderText().isEmpty(), isSilent);
    }

    void whatOthersHaveWrittenStays()
    {
        QTest::failOnWarning(QRegularExpression(u"changed by another program"_s));
        typePhrase(u"b"_s);
        write({u"x"_s});
        dialog()->findChild<QPlainTextEdit*>()->setPlainText(u"changed"_s);
        dialog()->accept();
        QCOMPARE(stored(), QStringList({u"b:changed"_s, u"x:"_s}));
    }

    void problemsAreTold_data()
    {
        const DataTable<QString, QByteArray, QString> row("phrase", "document", "problem");
        row("empty", u""_s, {}, u"A phrase needs at least one character."_s);
        row("blank", u"  "_s, {}, u"A phrase needs at least one character."_s);
        row("already there", u"c"_s, {}, u"There is such a phrase already."_s);
        row("broken document", u"b"_s, "nothing", u"The sounds document cannot be read."_s);
    }

    void problemsAreTold()
    {
        const auto [phrase, document, problem] = currentRow<QString, QByteArray, QString>();
        typePhrase(phrase);
        if (!document.isEmpty()) {
            Files::write(m_path, document);
        }
        const QByteArray before = Files::contents(m_path);
        QTest::keyClick(dialog()->findChild<QLineEdit*>(), Qt::Key_Return);
        QVERIFY(dialog());
        QCOMPARE(dialog()->focusWidget(), dialog()->findChild<QLineEdit*>());
        QCOMPARE(dialog()->findChild<QLineEdit*>()->accessibleDescription(), problem);
        QCOMPARE(Files::contents(m_path), before);
    }
};

int main(int argc, char** argv)
{
    // The offscreen platform has no selection.
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication application(argc, argv);
    AddClippingTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "AddClippingTest.moc"

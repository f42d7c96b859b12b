// SPDX-License-Identifier: MIT
#include "PhrasesTabFixture.h"

#include <core/BYGlobals.h>
#include <core/PhraseList.h>
#include <core/SharedNames.h>

#include <QAbstractItemModelTester>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

DictionaryPointer phraseEntry(const QString& phrase, const QString& sound, const QString& app)
{
    const DictionaryPointer entry = Dictionary::create();
    const auto insert = [&entry](const QString& key, const QString& text) {
        if (!text.isNull()) {
            entry->insert(key, text);
        }
    };
    insert(PhraseKey::phrase, phrase);
    insert(PhraseKey::soundFilepath, sound);
    insert(PhraseKey::app, app);
    return entry;
}

QStringList phrasesIn(const ArrayPointer& phrases)
{
    QStringList texts;
    for (const Value& value : phrases ? *phrases : *Array::create()) {
        const DictionaryPointer entry = value.dictionary();
        texts.append(entry ? entry->value(PhraseKey::phrase).string() : QString());
    }
    return texts;
}

PhrasesTabFixture::PhrasesTabFixture(const QList<Value>& phrases)
{
    const ArrayPointer list = Array::create();
    for (const Value& phrase : phrases) {
        list->append(phrase);
    }
    const DictionaryPointer root = Dictionary::create();
    root->insert(DocumentKey::clippings, list);
    root->insert(DocumentKey::setVolume, u"0.5"_s);
    write(u"test.blipsy"_s, root);
    BYGlobals::storeSetting(path(u"test.blipsy"_s), SettingKey::defaultFilePath);

    m_interface = std::make_unique<Interface>();
    window = m_interface->view();
    table = window->findChild<BYTableView*>();
    editPane = table->editEntryPane;
    popUp = table->defaultClippingsFileNSPopUpButton;
    table->awakeFromNib();
    new QAbstractItemModelTester(
        table->model(), QAbstractItemModelTester::FailureReportingMode::QtTest, table->model());

    window->resize(860, 680);
    window->show();
    window->activateWindow();
    table->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(window));
}

PhrasesTabFixture::~PhrasesTabFixture()
{
    settle();
    BYGlobals::setEditEntryPaneTextIsDirty(false);
    gConfirmRemove = true;
    editEntryInProgress = false;
}

DictionaryPointer PhrasesTabFixture::entry(int row) const
{
    return PhraseList::entryAt(BYGlobals::clippingsArray(), row);
}

DictionaryPointer PhrasesTabFixture::entryCalled(const QString& phrase) const
{
    return entry(PhraseList::rowOfPhrase(BYGlobals::clippingsArray(), phrase));
}

ArrayPointer PhrasesTabFixture::storedPhrases() const
{
    QFile file(BYGlobals::defaultFilePath());
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const DictionaryPointer root = PropertyList::read(file.readAll()).root.dictionary();
    return root ? root->value(DocumentKey::clippings).array() : ArrayPointer();
}

QVariant PhrasesTabFixture::cell(const QString& column, int row)
{
    return table->tableView_objectValueForTableColumn_row(table, column, row);
}

void PhrasesTabFixture::write(const QString& fileName, const Value& root) const
{
    QFile file(path(fileName));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(PropertyList::write(root));
}

QPoint PhrasesTabFixture::pointOf(int row, int column) const
{
    return table->visualRect(table->model()->index(row, column)).center();
}

// Posts arrive in order: when this one is heard (which the table neither acts on nor answers), so are those before it,
// and after a second one the answers to those.
void PhrasesTabFixture::settle()
{
    for (int round = 0; round < 2; ++round) {
        const auto count = recorder.names().count(NotificationName::accessibilityIsOff);
        BYGlobals::sendNotification(NotificationName::accessibilityIsOff);
        QTRY_VERIFY(recorder.names().count(NotificationName::accessibilityIsOff) > count);
    }
}

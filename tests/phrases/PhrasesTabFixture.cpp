// SPDX-License-Identifier: MIT
#include "PhrasesTabFixture.h"

#include <core/BYGlobals.h>
#include <core/SharedNames.h>

#include <QAbstractItemModelTester>
#include <QTest>

using namespace Qt::StringLiterals;

PhrasesTabFixture::PhrasesTabFixture(const QList<PropertyList::Value>& phrases)
    : DocumentFixture(phrases)
{
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

QVariant PhrasesTabFixture::cell(const QString& column, int row)
{
    return table->tableView_objectValueForTableColumn_row(table, column, row);
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

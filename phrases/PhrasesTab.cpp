// SPDX-License-Identifier: MIT
#include "PhrasesTab.h"

#include "PrintClippingsWindow.h"

#include <platform/desktop/Text.h>
#include <sounds/SoundPanelAccessory.h>

#include <QStackedLayout>

PhrasesTab::PhrasesTab(SoundPanelAccessory& soundPanel, QWidget* parent)
    : QWidget(parent)
{
    m_form.setupUi(this);
    makePrintWindow();
    BYTableView* table = m_form.abbsTableView;
    QComboBox* documents = m_form.defaultClippingsFileNSPopUpButton;
    table->numClippings = m_form.numClippings;
    table->removeAbb = m_form.removeAbb;
    table->defaultClippingsFileNSPopUpButton = documents;
    soundPanel.serve(table);

    connect(m_form.addAbb, &QPushButton::clicked, table, [table] { table->addRow(table); });
    connect(m_form.removeAbb, &QPushButton::clicked, table, [table] { table->removeRow(table); });
    connect(documents, &QComboBox::activated, table, [table, documents] { table->openDoc(documents); });
}

void PhrasesTab::makePrintWindow()
{
    auto* window = new PrintClippingsWindow(this);
    const Ui::PrintClippingsWindow& form = window->form();
    BYTableView* table = m_form.abbsTableView;
    table->printClippingsWindow = window;
    table->printClippingsTextView = form.printClippingsTextView;
    table->printClippingsPrintButton = form.printClippingsPrintButton;
    table->printClippingsCancelButton = form.printClippingsCancelButton;
}

void PhrasesTab::setEditPane(QWidget* editPane)
{
    QWidget* place = m_form.editPanePlaceholder;
    auto* hint = new QLabel(Text::tr("Select a phrase to see its text."), place);
    hint->setAlignment(Qt::AlignCenter);
    hint->setEnabled(false);
    auto* layout = new QStackedLayout(place);
    layout->addWidget(hint);
    layout->addWidget(editPane);
    TableView* table = m_form.abbsTableView;
    connect(table, &TableView::selectionDidChange, place,
        [layout, table] { layout->setCurrentIndex(table->selectedRow() < 0 ? 0 : 1); });
}

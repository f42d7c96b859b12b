// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include "PhraseListPrinter.h"

#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <platform/desktop/Workspace.h>
#include <platform/panels/Alert.h>

#include <QDialog>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>

using namespace Qt::StringLiterals;

using PropertyList::Dictionary;
using PropertyList::Value;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.printing")

/// A preview holds all its pages in memory; nobody looks at more of them.
constexpr size_t previewedPages = 100;

} // namespace

void BYTableView::connectPrintWindow()
{
    if (!printClippingsWindow) {
        return;
    }
    if (printClippingsTextView) {
        connect(printClippingsTextView, &QPrintPreviewWidget::paintRequested, this,
            [this](QPrinter* printer) { phrasesToPrint().print(*printer, previewedPages); });
    }
    if (printClippingsPrintButton) {
        connect(printClippingsPrintButton, &QPushButton::clicked, this, &BYTableView::printClippings);
    }
    if (printClippingsCancelButton) {
        connect(printClippingsCancelButton, &QPushButton::clicked, printClippingsWindow, &QDialog::reject);
    }
}

void BYTableView::showPrintClippingsWindow(QObject*)
{
    if (!printClippingsWindow) {
        return;
    }
    printClippingsWindow->show();
    printClippingsWindow->raise();
    if (printClippingsTextView) {
        printClippingsTextView->updatePreview();
    }
}

PhraseListPrinter BYTableView::phrasesToPrint() const
{
    QList<PhraseListPrinter::Row> rows;
    if (const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray()) {
        rows.reserve(phrases->size());
        for (const Value& value : std::as_const(*phrases)) {
            const PropertyList::DictionaryPointer entry = value.dictionary();
            if (!entry) {
                continue;
            }
            const QString application = entry->value(PhraseKey::app).textValue();
            rows.append({entry->value(PhraseKey::phrase).textValue(),
                application.isEmpty() ? QString() : Workspace::displayNameAtPath(application),
                entry->value(PhraseKey::soundFilepath).textValue()});
        }
    }
    return {QFileInfo(BYGlobals::defaultFilePath()).completeBaseName(),
        {localized(u"Phrase"_s), localized(u"Application"_s), localized(u"Sound"_s)}, localized(u"Page %1 of %2"_s),
        rows};
}

void BYTableView::printClippings()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QFileInfo(BYGlobals::defaultFilePath()).completeBaseName());
    QPrintDialog dialog(&printer, printClippingsWindow);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    if (phrasesToPrint().print(printer)) {
        printClippingsWindow->accept();
    } else {
        const QString target = printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName();
        qCWarning(log).noquote() << u"cannot print to %1"_s.arg(target);
        Alert::runAlertPanel(printClippingsWindow, localized(u"The phrases cannot be printed."_s),
            localized(u"Choose another printer or file."_s), localized(u"OK"_s), {});
    }
}

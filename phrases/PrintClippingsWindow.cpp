// SPDX-License-Identifier: MIT
#include "PrintClippingsWindow.h"

#include "PhraseListPrinter.h"

#include <core/BYGlobals.h>
#include <core/Phrase.h>
#include <platform/desktop/Text.h>
#include <platform/desktop/Workspace.h>
#include <platform/panels/Alert.h>

#include <QFileInfo>
#include <QLoggingCategory>
#include <QPrintDialog>
#include <QPrinter>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.printing")

/// A preview holds all its pages in memory; nobody looks at more of them.
constexpr size_t previewedPages = 100;

QString documentName()
{
    return QFileInfo(BYGlobals::defaultFilePath()).completeBaseName();
}

PhraseListPrinter phrasesToPrint()
{
    QList<PhraseListPrinter::Row> rows;
    if (const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray()) {
        rows.reserve(phrases->size());
        for (const PropertyList::Value& value : std::as_const(*phrases)) {
            const Phrase phrase = value.dictionary();
            if (!phrase) {
                continue;
            }
            const QString application = phrase.app();
            rows.append({phrase.phrase(), application.isEmpty() ? QString() : Workspace::displayNameAtPath(application),
                phrase.soundFilepath()});
        }
    }
    return {documentName(), {Text::tr("Phrase"), Text::tr("Application"), Text::tr("Sound")}, Text::tr("Page %1 of %2"),
        rows};
}

} // namespace

PrintClippingsWindow::PrintClippingsWindow(QWidget* parent)
    : QDialog(parent)
{
    m_form.setupUi(this);
    connect(m_form.printClippingsTextView, &QPrintPreviewWidget::paintRequested, this,
        [](QPrinter* printer) { phrasesToPrint().print(*printer, previewedPages); });
    connect(m_form.printClippingsPrintButton, &QPushButton::clicked, this, &PrintClippingsWindow::print);
    connect(m_form.printClippingsCancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

void PrintClippingsWindow::present()
{
    show();
    raise();
    m_form.printClippingsTextView->updatePreview();
}

void PrintClippingsWindow::print()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(documentName());
    QPrintDialog dialog(&printer, this);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    if (phrasesToPrint().print(printer)) {
        accept();
        return;
    }
    const QString target = printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName();
    qCWarning(log).noquote() << u"cannot print to %1"_s.arg(target);
    Alert::runAlertPanel(this, Text::tr("The phrases cannot be printed."), Text::tr("Choose another printer or file."),
        Text::tr("OK"), {});
}

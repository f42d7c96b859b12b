// SPDX-License-Identifier: MIT
// A window with a text, for programs that type into it. Owns the clipboard with contents of several forms. Tells each
// change on its output: where the caret is, a colon, the text with line ends as U+2028, and a line end.
#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QTextEdit>

#include <iostream>

using namespace Qt::StringLiterals;

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    auto contents = std::make_unique<QMimeData>();
    contents->setText(u"kept"_s);
    contents->setHtml(u"<b>kept</b>"_s);
    contents->setData(u"application/x-own"_s, QByteArray(100'000, '\1'));
    QApplication::clipboard()->setMimeData(contents.release());

    QTextEdit edit;
    const auto tell = [&edit] {
        const QString text = edit.toPlainText().replace(u'\n', QChar::LineSeparator);
        std::cout << edit.textCursor().position() << ':' << text.toStdString() << std::endl;
    };
    QObject::connect(&edit, &QTextEdit::textChanged, &edit, tell);
    QObject::connect(&edit, &QTextEdit::cursorPositionChanged, &edit, tell);
    edit.show();
    return QApplication::exec();
}

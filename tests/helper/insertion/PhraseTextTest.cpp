// SPDX-License-Identifier: MIT
#include <helper/insertion/PhraseText.h>
#include <platform/richtext/Rtfd.h>

#include <QDateTime>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>

#include <DataTable.h>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;

namespace {

const QDateTime moment(QDate(2009, 3, 5), QTime(14, 7));

Phrase phrase(const QString& name, const QString& text)
{
    return {Dictionary::create({{PhraseKey::phrase, name}, {PhraseKey::plainText, text}})};
}

/// The text with what is done between its pieces and in the end.
QString described(const std::optional<PhraseText>& text)
{
    if (!text) {
        return u"nothing"_s;
    }
    QString result;
    for (const TextStep& step : text->steps) {
        const auto* const piece = std::get_if<TextPiece>(&step);
        result += piece != nullptr ? piece->plain : u"[%1]"_s.arg(int(std::get<CaretMove>(step)));
    }
    if (text->charactersAfterCaret) {
        result += u"[caret %1]"_s.arg(*text->charactersAfterCaret);
    }
    if (text->keepsTrigger) {
        result += *text->keepsTrigger ? u"[keep]"_s : u"[drop]"_s;
    }
    return result;
}

QString resolved(const Phrase& of, const QList<Phrase>& others = {})
{
    const auto phrases = Array::create({of.dictionary()});
    for (const Phrase& other : others) {
        phrases->append(other.dictionary());
    }
    const auto mainDocument = Array::create(
        {phrase(u"sig"_s, u"Zoe"_s).dictionary(), phrase(u"main"_s, u"in the main document"_s).dictionary()});
    return described(PhraseText::of(of, {PropertyList::ArrayPointer(), phrases, mainDocument}, moment));
}

} // namespace

class PhraseTextTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void textIsResolved_data()
    {
        const DataTable<QString, QString> row("stored", "inserted");
        row("plain", u"be right back"_s, u"be right back"_s);
        row("nothing", u""_s, u"nothing"_s);
        row("stamp and conversion", u"[[6]] at %H:%M"_s, u"2009-03-05 at 14:07"_s);
        row("caret", u"Dear %|,\ne\u0301"_s, u"Dear ,\ne\u0301[caret 3]"_s);
        row("last caret counts", u"%|a%|bc"_s, u"abc[caret 2]"_s);
        row("percent signs are no marker", u"100%%| %%%-"_s, u"100%| %[drop]"_s);
        row("trigger character", u"a%+%-%+"_s, u"a[keep]"_s);
        row("arrow keys", u"()%<a%>%v%^"_s, u"()[0]a[2][3][1]"_s);
        row("lonely percent sign", u"100 %"_s, u"100 %"_s);
        row("reference", u"see \u270Dsig\u270D!"_s, u"see Ann 2009!"_s);
        row("reference to the second document", u"\u270Dmain\u270D"_s, u"in the main document"_s);
        row("name that is no phrase", u"\u270Dnone\u270D"_s, u"\u270Dnone\u270D"_s);
        row("mark without a second one", u"a\u270D%|b"_s, u"a\u270Db[caret 1]"_s);
        row("circle", u"a\u270Dme\u270Db"_s, u"ab"_s);
        row("longer circle", u"\u270Dround\u270D."_s, u"<>."_s);
    }

    void textIsResolved()
    {
        const auto [stored, inserted] = currentRow<QString, QString>();
        const QList<Phrase> others{phrase(u"sig"_s, u"%|Ann%- %Y%<"_s), phrase(u"round"_s, u"<\u270Dme\u270D>"_s)};
        QCOMPARE(resolved(phrase(u"me"_s, stored), others), inserted);
    }

    void explosionIsNotInserted()
    {
        QList<Phrase> others;
        for (int level = 0; level < 12; ++level) {
            const QString below = u"\u270D%1\u270D"_s.arg(level + 1);
            others.append(phrase(QString::number(level), below + below + below));
        }
        QCOMPARE(resolved(phrase(u"me"_s, u"\u270D0\u270D"_s), others), u"nothing"_s);
        QCOMPARE(resolved(phrase(u"me"_s, QString(PhraseText::maximumLength + 1, u'x'))), u"nothing"_s);
    }

    void formattingIsKept()
    {
        QTextDocument document;
        QTextCursor cursor(&document);
        QTextCharFormat bold;
        bold.setFontWeight(QFont::Bold);
        cursor.insertText(u"Today %Y%< "_s);
        cursor.insertText(u"[[6]]%|\n\u270Dsig\u270D"_s, bold);
        const Phrase rich = phrase(u"me"_s, u"plain"_s);
        rich.setRtfd(Rtfd::write(document));

        const auto phrases = Array::create({rich.dictionary(), phrase(u"sig"_s, u"Ann"_s).dictionary()});
        const auto text = PhraseText::of(rich, {phrases}, moment);
        QCOMPARE(described(text), u"Today 2009[0] 2009-03-05\nAnn[caret 4]"_s);
        QTextDocument pasted;
        pasted.setHtml(std::get<TextPiece>(text->steps.back()).html);
        QCOMPARE(pasted.toPlainText(), u" 2009-03-05\nAnn"_s);
        for (const int position : {3, 14}) {
            cursor = QTextCursor(&pasted);
            cursor.setPosition(position);
            QCOMPARE(cursor.charFormat().fontWeight(), int(QFont::Bold));
        }
    }
};

QTEST_MAIN(PhraseTextTest)
#include "PhraseTextTest.moc"

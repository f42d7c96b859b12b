// SPDX-License-Identifier: MIT
#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

#include <Files.h>

using namespace Qt::StringLiterals;

namespace {

QString contents(const QString& path)
{
    return QString::fromUtf8(Files::contents(QStringLiteral(BLIPSY_SOURCES "/") + path));
}

/// The texts of the elements @p name in an XML file, without those that are marked as not to be translated.
QSet<QString> elements(const QString& path, const QString& name)
{
    QSet<QString> texts;
    QXmlStreamReader xml(contents(path));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.attributes().value("notr"_L1) == u"true") {
            xml.skipCurrentElement();
        } else if (xml.name() == name) {
            texts.insert(xml.readElementText());
        }
    }
    return texts;
}

/// The string literals that a source file gives to localized() and its like.
QSet<QString> localizedLiterals(const QString& path)
{
    static const QRegularExpression call(
        uR"re(ocaliz(?:ed|able|edString|edText)\(\s*((?:u?"(?:[^"\\]|\\.)*"(?:_s)?\s*)+))re"_s);
    static const QRegularExpression literal(uR"re("((?:[^"\\]|\\.)*)")re"_s);
    QSet<QString> texts;
    const QString source = contents(path);
    for (auto calls = call.globalMatch(source); calls.hasNext();) {
        QString text;
        for (auto parts = literal.globalMatch(calls.next().captured(1)); parts.hasNext();) {
            text += parts.next().captured(1);
        }
        texts.insert(text.replace(u"\\n"_s, u"\n"_s).replace(u"\\\""_s, u"\""_s));
    }
    return texts;
}

} // namespace

class TranslationsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void everyTextIsInEveryLanguage()
    {
        QSet<QString> texts;
        for (const QString& folder :
            {u"PTHotKeysLib"_s, u"appfiles"_s, u"core"_s, u"editpane"_s, u"events"_s, u"host"_s, u"launcher"_s,
                u"pane"_s, u"phrases"_s, u"platform"_s, u"prefs"_s, u"sounds"_s, u"texts"_s}) {
            QDirIterator files(QStringLiteral(BLIPSY_SOURCES "/") + folder, {u"*.cpp"_s, u"*.h"_s, u"*.ui"_s},
                QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const QString path = files.next().sliced(qsizetype(sizeof BLIPSY_SOURCES));
                texts += path.endsWith(u".ui") ? elements(path, u"string"_s) : localizedLiterals(path);
            }
        }
        QVERIFY(texts.contains(u"Really make this plain text?"_s) && texts.contains(u"Insertion point"_s));
        const QSet<QString> translated = elements(u"resources/translations/de.ts"_s, u"source"_s);
        const QStringList missing = (texts - translated).values();
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u" | ")));
    }
};

QTEST_GUILESS_MAIN(TranslationsTest)
#include "TranslationsTest.moc"

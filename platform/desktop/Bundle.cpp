// SPDX-License-Identifier: MIT
#include "Bundle.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

QString& registeredPath()
{
    static QString path;
    return path;
}

bool isEnglish(const QString& language)
{
    return language == u"C" || language == u"en" || language.startsWith(u"en-");
}

/// The user's languages in order, each as it is and without its country ("de-AT", "de"), up to English, in which the
/// keys themselves are written. English also stands for what has no translation.
QStringList languages()
{
    QStringList result;
    for (const QString& language : QLocale().uiLanguages()) {
        if (isEnglish(language)) {
            break;
        }
        result << language << QString(language).replace(u'-', u'_') << language.section(u'-', 0, 0);
    }
    result << u"en"_s;
    return result;
}

} // namespace

void Bundle::registerBundle(const QString& path)
{
    registeredPath() = QDir(path).absolutePath();
    static QPointer<QTranslator> strings;
    delete strings;
    strings = new QTranslator(QCoreApplication::instance());
    for (const QString& language : languages()) {
        if (strings->load(resourcePath() + u'/' + language + u".lproj/Localizable.qm"_s)) {
            break;
        }
    }
    QCoreApplication::installTranslator(strings);
}

QString Bundle::path()
{
    return registeredPath();
}

QString Bundle::resourcePath()
{
    return path().isEmpty() ? QString() : path() + u"/Contents/Resources"_s;
}

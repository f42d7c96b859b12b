// SPDX-License-Identifier: MIT
#include "Bundle.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <QTranslator>

#include <map>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct RegisteredBundle
{
    QString path;
    std::unique_ptr<QTranslator> strings;
};

std::map<QString, RegisteredBundle>& registeredBundles()
{
    static std::map<QString, RegisteredBundle> bundles;
    return bundles;
}

const RegisteredBundle* find(const QString& identifier)
{
    const auto found = registeredBundles().find(identifier);
    return found == registeredBundles().end() ? nullptr : &found->second;
}

QString resources(const QString& bundlePath)
{
    return bundlePath + u"/Contents/Resources"_s;
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

std::unique_ptr<QTranslator> loadStrings(const QString& bundlePath)
{
    auto translator = std::make_unique<QTranslator>();
    for (const QString& language : languages()) {
        if (translator->load(resources(bundlePath) + u'/' + language + u".lproj/Localizable.qm"_s)) {
            break;
        }
    }
    return translator;
}

} // namespace

Bundle::Bundle(QString identifier)
    : m_identifier(std::move(identifier))
{
}

Bundle Bundle::bundleWithIdentifier(const QString& identifier)
{
    return Bundle(identifier);
}

void Bundle::registerBundle(const QString& identifier, const QString& path)
{
    const QString absolute = QDir(path).absolutePath();
    registeredBundles().insert_or_assign(identifier, RegisteredBundle{absolute, loadStrings(absolute)});
}

QString Bundle::bundlePath() const
{
    const RegisteredBundle* bundle = find(m_identifier);
    return bundle == nullptr ? QString() : bundle->path;
}

QString Bundle::resourcePath() const
{
    const QString path = bundlePath();
    return path.isEmpty() ? QString() : resources(path);
}

QString Bundle::localizedString(const QString& key, const QString& value) const
{
    const RegisteredBundle* bundle = find(m_identifier);
    const QString translation =
        bundle == nullptr ? QString()
                          : bundle->strings->translate(m_identifier.toUtf8().constData(), key.toUtf8().constData());
    if (!translation.isEmpty()) {
        return translation;
    }
    return value.isEmpty() ? key : value;
}

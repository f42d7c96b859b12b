// SPDX-License-Identifier: MIT
#include "Preferences.h"

#include "PreferencesDomain.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;
using PropertyList::Value;

namespace {

const QString globalDomain = u"global"_s;

QString hostDomain()
{
    return QCoreApplication::applicationName();
}

} // namespace

void Preferences::setValue(const QString& key, const Value& value, const QString& domain)
{
    PreferencesDomain::named(domain).setValue(key, value);
}

Value Preferences::copyValue(const QString& key, const QString& domain)
{
    PreferencesDomain& store = PreferencesDomain::named(domain);
    store.refresh();
    return store.value(key);
}

bool Preferences::synchronize(const QString& domain)
{
    PreferencesDomain& store = PreferencesDomain::named(domain);
    const bool stored = store.store();
    store.refresh();
    return stored;
}

QString Preferences::filePath(const QString& domain)
{
    return PreferencesDomain::named(domain).filePath();
}

UserDefaults& UserDefaults::standardUserDefaults()
{
    static UserDefaults defaults;
    return defaults;
}

void UserDefaults::addSuiteNamed(const QString& domain)
{
    if (!m_suites.contains(domain)) {
        m_suites.append(domain);
    }
}

void UserDefaults::synchronize()
{
    for (const QString& domain : searchList()) {
        Preferences::synchronize(domain);
    }
}

Value UserDefaults::objectForKey(const QString& key) const
{
    return firstValue(key, searchList());
}

Value UserDefaults::objectForKeyOutsideSuites(const QString& key)
{
    return firstValue(key, {hostDomain(), globalDomain});
}

Value UserDefaults::firstValue(const QString& key, const QStringList& domains)
{
    for (const QString& domain : domains) {
        if (Value value = PreferencesDomain::named(domain).value(key); !value.isNull()) {
            return value;
        }
    }
    return {};
}

QStringList UserDefaults::searchList() const
{
    return QStringList{hostDomain()} + m_suites + QStringList{globalDomain};
}

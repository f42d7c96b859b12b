// SPDX-License-Identifier: MIT
#include "PreferencesDomain.h"

#include "AtomicFile.h"
#include "FileLock.h"

#include <product/Product.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QTimer>

#include <chrono>
#include <map>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using PropertyList::Value;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".preferences")

/// Every user action may store more than one setting, and all of them together must not be felt.
constexpr auto lockTimeout = 40ms;
constexpr auto retryDelay = 500ms;

constexpr qint64 maximumSize = 1 << 26;

Value deepCopy(const Value& value)
{
    if (const PropertyList::ArrayPointer array = value.array()) {
        PropertyList::ArrayPointer copy = PropertyList::Array::create();
        copy->reserve(array->size());
        for (const Value& item : *array) {
            copy->append(deepCopy(item));
        }
        return copy;
    }
    if (const PropertyList::DictionaryPointer dictionary = value.dictionary()) {
        PropertyList::DictionaryPointer copy = PropertyList::Dictionary::create();
        for (const auto& [key, item] : *dictionary) {
            copy->insert(key, deepCopy(item));
        }
        return copy;
    }
    return value;
}

/// Logs @p problem unless it is the @p last one; an empty text ends it.
void report(const QString& problem, QString& last)
{
    if (problem != last && !problem.isEmpty()) {
        qCWarning(log).noquote() << problem;
    }
    last = problem;
}

} // namespace

PreferencesDomain::PreferencesDomain(const QString& name)
    : m_path(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
             QStringLiteral("/" PRODUCT_NAME "/preferences/") + name + u".plist"_s)
    , m_nativePath(QFile::encodeName(m_path))
{
}

PreferencesDomain::~PreferencesDomain() = default;

PreferencesDomain& PreferencesDomain::named(const QString& name)
{
    static std::map<QString, std::unique_ptr<PreferencesDomain>> domains;
    std::unique_ptr<PreferencesDomain>& domain = domains[name];
    if (!domain) {
        domain = std::make_unique<PreferencesDomain>(name);
        AtomicFile::removeLeftovers(domain->filePath());
        domain->refresh();
    }
    return *domain;
}

Value PreferencesDomain::value(const QString& key) const
{
    const auto pending = m_pending.constFind(key);
    return deepCopy(pending != m_pending.constEnd() ? *pending : m_stored->value(key));
}

void PreferencesDomain::setValue(const QString& key, const Value& value)
{
    m_pending.insert(key, deepCopy(value));
}

void PreferencesDomain::refresh()
{
    const std::optional<FileStamp> stamp = FileStamp::of(m_nativePath);
    if (stamp == m_stamp) {
        return;
    }
    m_stamp = stamp;
    readFile();
}

void PreferencesDomain::readFile()
{
    m_isBroken = false;
    if (!m_stamp) {
        m_stored = PropertyList::Dictionary::create();
        return;
    }
    const Result<PropertyList::DictionaryPointer> root = PropertyList::readFile(m_path, maximumSize);
    if (!root) {
        m_isBroken = true;
        report(u"cannot read settings %1: %2"_s.arg(m_path, root.error()), m_readProblem);
        return;
    }
    m_stored = *root;
    report({}, m_readProblem);
}

bool PreferencesDomain::store()
{
    if (m_pending.isEmpty()) {
        return true;
    }
    if (!QDir().mkpath(QFileInfo(m_path).path())) {
        report(u"cannot store settings %1: its folder cannot be made"_s.arg(m_path), m_storeProblem);
        return false;
    }
    return lockAndStore();
}

bool PreferencesDomain::lockAndStore()
{
    FileLock lock(m_path + u".lock"_s);
    // Whoever kept the lock for longer than anybody needs is not waited for again.
    if (const std::error_code error = lock.lockWithin(m_lockTimedOut ? 0ms : lockTimeout)) {
        m_lockTimedOut = error == std::errc::resource_unavailable_try_again;
        report(m_lockTimedOut ? u"settings %1 are locked by another process; storing them later"_s.arg(m_path)
                              : u"cannot store settings %1: its lock file cannot be made: %2"_s.arg(
                                    m_path, QString::fromStdString(error.message())),
            m_storeProblem);
        if (m_lockTimedOut) {
            retryLater();
        }
        return false;
    }
    m_lockTimedOut = false;
    return writeMerged();
}

bool PreferencesDomain::writeMerged()
{
    refresh();
    if (m_isBroken) {
        return false;
    }
    const PropertyList::DictionaryPointer merged = deepCopy(m_stored).dictionary();
    for (auto pending = m_pending.cbegin(); pending != m_pending.cend(); ++pending) {
        merged->insert(pending.key(), pending.value());
    }
    if (const auto written = AtomicFile::write(m_path, PropertyList::write(merged)); !written) {
        report(written.error(), m_storeProblem);
        return false;
    }
    m_stored = merged;
    m_stamp = FileStamp::of(m_nativePath);
    m_pending.clear();
    report({}, m_storeProblem);
    return true;
}

void PreferencesDomain::retryLater()
{
    if (m_retryScheduled || QCoreApplication::instance() == nullptr) {
        return;
    }
    m_retryScheduled = true;
    QTimer::singleShot(retryDelay, QCoreApplication::instance(), [this] {
        m_retryScheduled = false;
        store();
    });
}

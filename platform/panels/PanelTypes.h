// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// The file types that an open panel offers, as its caller lists them: extensions, and classic types between
/// apostrophes.
class PanelTypes final
{
public:
    explicit PanelTypes(const QStringList& types = {});

    /// Every file is accepted.
    bool acceptsAll() const { return m_extensions.isEmpty() && m_classicTypes.isEmpty(); }

    /// Whether the type "app" is among them.
    bool offersApplications() const;
    bool acceptsExtensionOf(const QString& fileName) const;

    bool hasClassicTypes() const { return !m_classicTypes.isEmpty(); }

    /// Reads the Finder information of the file at @p path, so it takes a moment on slow disks.
    bool acceptsClassicTypeOf(const QString& path) const;
    /// By extension or by classic type.
    bool accepts(const QString& path) const;

private:
    QStringList m_extensions;
    QStringList m_classicTypes;
};

/// What can be chosen in a panel.
struct PanelRules
{
    PanelTypes types;
    bool canChooseFiles = true;
    bool canChooseDirectories = false;
    bool allowsMultipleSelection = false;
};

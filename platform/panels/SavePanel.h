// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// A modal panel in which the user names a file to be written.
class SavePanel final
{
public:
    explicit SavePanel(QWidget* parent = nullptr);

    void setTitle(const QString& title) { m_title = title; }

    /// A suffix that the caller will append (".Blipsy"): the panel asks before a file of the resulting name is
    /// replaced, and refuses a name that cannot be written.
    void setAppendedSuffix(const QString& suffix) { m_suffix = suffix; }

    /// Runs the panel: 1 when the user has chosen, 0 when not. @p directory is the folder shown first, @p file the name
    /// proposed.
    int runModalForDirectory_file(const QString& directory, const QString& file);

    /// The absolute path chosen, as typed: nothing is appended.
    QString filename() const { return m_filename; }

private:
    QWidget* m_parent;
    QString m_title;
    QString m_suffix;
    QString m_filename;
};

// SPDX-License-Identifier: MIT
#pragma once

#include <pane/Interface.h>
#include <phrases/BYTableView.h>
#include <platform/controls/Matrix.h>
#include <platform/controls/Slider.h>
#include <platform/plist/PropertyList.h>
#include <platform/richtext/TextView.h>

#include <QComboBox>
#include <QTemporaryDir>

#include <NotificationRecorder.h>

#include <memory>

/// A phrase entry; null texts leave their keys out.
PropertyList::DictionaryPointer phraseEntry(const QString& phrase, const QString& sound, const QString& app = {});

/// The texts of the phrases in a list, in its order; a null text for what is no entry.
QStringList phrasesIn(const PropertyList::ArrayPointer& phrases);

/// The phrases tab as a user meets it, in the pane but with no other controller set up, over a document in a folder of
/// its own.
class PhrasesTabFixture final
{
public:
    explicit PhrasesTabFixture(const QList<PropertyList::Value>& phrases);
    /// Waits until the notifications of this tab have come back.
    ~PhrasesTabFixture();
    Q_DISABLE_COPY_MOVE(PhrasesTabFixture)

    PropertyList::DictionaryPointer entry(int row) const;
    PropertyList::DictionaryPointer entryCalled(const QString& phrase) const;
    /// The phrase list as it is on disk now.
    PropertyList::ArrayPointer storedPhrases() const;
    QVariant cell(const QString& column, int row);

    QString path(const QString& fileName) const { return m_folder.filePath(fileName); }

    void write(const QString& fileName, const PropertyList::Value& root) const;
    /// The point of the viewport at the middle of a cell.
    QPoint pointOf(int row, int column) const;
    /// Waits until everything posted so far has been heard.
    void settle();

    QTemporaryDir m_folder;
    QWidget* window = nullptr;
    BYTableView* table = nullptr;
    TextView* editPane = nullptr;
    QComboBox* popUp = nullptr;
    NotificationRecorder recorder;

private:
    std::unique_ptr<Interface> m_interface;
};

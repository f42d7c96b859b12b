// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

#include <functional>

class QMenu;
class TableView;

/// What draws the cells of a table column. One cell serves all rows of its column (and may serve several columns): its
/// content is set just before each row is drawn, by the data source.
class Cell
{
public:
    enum class ControlSize { Regular, Small };

    Cell() = default;
    Cell(const Cell&) = delete;
    Cell& operator=(const Cell&) = delete;
    Cell(Cell&&) = delete;
    Cell& operator=(Cell&&) = delete;
    virtual ~Cell() = default;

    const QIcon& image() const { return m_image; }

    void setImage(const QIcon& image) { m_image = image; }

    const QString& title() const { return m_title; }

    void setTitle(const QString& title) { m_title = title; }

    bool isEditable() const { return m_editable; }

    void setEditable(bool editable) { m_editable = editable; }

    ControlSize controlSize() const { return m_controlSize; }

    void setControlSize(ControlSize size) { m_controlSize = size; }

    /// Drawn pale, for content that is there in name only.
    bool isDimmed() const { return m_dimmed; }

    void setDimmed(bool dimmed) { m_dimmed = dimmed; }

private:
    QIcon m_image;
    QString m_title;
    ControlSize m_controlSize = ControlSize::Regular;
    bool m_editable = false;
    bool m_dimmed = false;
};

/// Text, edited in place where cell and column are editable.
class TextCell final : public Cell
{
};

/// A picture that is no control.
class ImageCell final : public Cell
{
};

/// A button without a frame that shows its image. A click selects the row, performs the action, and then gives the data
/// source a new object value for the cell.
class ButtonCell final : public Cell
{
public:
    using Action = std::function<void(TableView*)>;

    void setAction(Action action) { m_action = std::move(action); }

    bool hasAction() const { return bool(m_action); }

    /// The key that does the same with the command modifier; shown in the tool tip.
    void setKeyEquivalent(const QString& key) { m_keyEquivalent = key; }

    const QString& keyEquivalent() const { return m_keyEquivalent; }

    /// Performs the action as a click would, for @p sender.
    void performClick(TableView* sender) const;

private:
    Action m_action;
    QString m_keyEquivalent;
};

/// A pop-up menu without a frame. A click selects the row and opens the menu; the menu's own actions do the rest.
class PopUpButtonCell final : public Cell
{
public:
    /// The menu stays its owner's.
    void setMenu(QMenu* menu) { m_menu = menu; }

    QMenu* menu() const { return m_menu; }

private:
    QMenu* m_menu = nullptr;
};

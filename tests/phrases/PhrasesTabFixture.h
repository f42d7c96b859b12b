// SPDX-License-Identifier: MIT
#pragma once

#include "DocumentFixture.h"

#include <pane/Interface.h>
#include <phrases/BYTableView.h>
#include <platform/controls/Matrix.h>
#include <platform/controls/Slider.h>
#include <platform/richtext/TextView.h>

#include <QComboBox>

#include <NotificationRecorder.h>

#include <memory>

/// The phrases tab as a user meets it, in the pane but with no other controller set up, over a document in a folder of
/// its own.
class PhrasesTabFixture final : public DocumentFixture
{
public:
    explicit PhrasesTabFixture(const QList<PropertyList::Value>& phrases);
    /// Waits until the notifications of this tab have come back.
    ~PhrasesTabFixture();
    Q_DISABLE_COPY_MOVE(PhrasesTabFixture)

    QVariant cell(const QString& column, int row);
    /// The point of the viewport at the middle of a cell.
    QPoint pointOf(int row, int column) const;
    /// Waits until everything posted so far has been heard.
    void settle();

    QWidget* window = nullptr;
    BYTableView* table = nullptr;
    TextView* editPane = nullptr;
    QComboBox* popUp = nullptr;
    NotificationRecorder recorder;

private:
    std::unique_ptr<Interface> m_interface;
};

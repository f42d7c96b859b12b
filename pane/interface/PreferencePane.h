// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QtPlugin>

class QWidget;

/// What is to be done with a sounds document without showing the pane.
struct DocumentTask
{
    enum class Kind {
        /// Tell what in the document is unknown, missing or cannot be played.
        Check,
        /// Write the phrases to the destination, or to the standard output stream where that is empty.
        Export,
        /// Convert the file of another tool into a document at the destination.
        Import,
    };

    enum class Form {
        /// CSV for an export, lines for people for the others.
        Usual,
        Text,
        Json,
    };

    Kind kind = Kind::Check;
    /// Absolute paths.
    QString source;
    QString destination;
    Form form = Form::Usual;
};

/// What a host program asks of a settings pane. The host loads the pane's module, casts its instance to this
/// interface and needs nothing else of it. All calls are made on the main thread.
class PreferencePane
{
public:
    PreferencePane() = default;
    PreferencePane(const PreferencePane&) = delete;
    PreferencePane& operator=(const PreferencePane&) = delete;
    PreferencePane(PreferencePane&&) = delete;
    PreferencePane& operator=(PreferencePane&&) = delete;
    virtual ~PreferencePane() = default;

    /// Tells the pane where its bundle folder is; the first call a host makes.
    virtual void setBundlePath(const QString& path) = 0;

    /// Says that the view is only going to be pictured: the pane starts no other program, and makes no login item.
    /// Before loadMainView().
    virtual void setPictured() = 0;

    /// Makes the sounds document at @p path the document in use, as if the user had chosen it. Before loadMainView()
    /// it is the one that the pane opens with.
    virtual void openDocument(const QString& path) = 0;

    /// Loads the interface on the first call. The pane owns the widget; the host shows it in a window of its own and
    /// gives it the focus, which its focus proxy takes.
    virtual QWidget* loadMainView() = 0;

    /// The host is about to take the view away. The pane asks about what the user has not saved, and blocks until that
    /// is answered.
    virtual void willUnselect() = 0;

    /// The names of the tabs, untranslated, in the order shown.
    virtual QStringList tabNames() const = 0;
    /// Shows a tab. False when there is none of that name.
    virtual bool selectTab(const QString& name) = 0;

    /// Carries a task out instead of showing anything, and answers the program's exit status: 0 when it is done, 1 when
    /// it cannot be, 2 when a check has found something. Results go to the standard output stream, and the reason of a
    /// failure to the standard error stream.
    virtual int carryOut(const DocumentTask& task) = 0;
};

Q_DECLARE_INTERFACE(PreferencePane, "com.blipsy.PreferencePane/1.1")

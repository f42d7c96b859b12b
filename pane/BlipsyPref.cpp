// SPDX-License-Identifier: MIT
#include "BlipsyPref.h"

#include "Interface.h"

#include <core/BYGlobals.h>
#include <documents/DocumentTasks.h>
#include <phrases/RecentDocuments.h>
#include <platform/controls/AssistiveClicks.h>
#include <platform/desktop/Bundle.h>
#include <platform/desktop/TerminationSignals.h>

#include <QCoreApplication>

BlipsyPref::BlipsyPref(QObject* parent)
    : QObject(parent)
{
}

BlipsyPref::~BlipsyPref() = default;

void BlipsyPref::setBundlePath(const QString& path)
{
    Bundle::registerBundle(path);
}

void BlipsyPref::setPictured()
{
    m_isPictured = true;
}

void BlipsyPref::openDocument(const QString& path)
{
    if (m_interface) {
        m_interface->openDocument(path);
        return;
    }
    Settings::defaultFilePath.store(path);
    BYGlobals::init();
    RecentDocuments::add(path);
}

QWidget* BlipsyPref::loadMainView()
{
    if (!m_interface) {
        // Assistive programs meet the controls as soon as they are made.
        AssistiveClicks::install();
        endWhenAsked();
        SoundsDocument::shared().readAhead(Settings::defaultFilePath.value());
        m_interface = std::make_unique<Interface>();
        for (const auto& setUp : m_interface->setUps()) {
            setUp();
        }
        if (!m_isPictured) {
            m_interface->setUpLauncher();
        }
    }
    return m_interface->view();
}

/// A change may still be on its way to the file when the session ends. The window is not closed, which might ask about
/// a text that is being typed.
void BlipsyPref::endWhenAsked()
{
    m_termination = std::make_unique<TerminationSignals>();
    connect(m_termination.get(), &TerminationSignals::received, this, [] {
        Changes::finish();
        QCoreApplication::exit();
    });
}

void BlipsyPref::willUnselect()
{
    if (m_interface) {
        m_interface->willUnselect();
    }
}

QStringList BlipsyPref::tabNames() const
{
    return Interface::tabNames();
}

bool BlipsyPref::selectTab(const QString& name)
{
    return m_interface && m_interface->selectTab(name);
}

int BlipsyPref::carryOut(const DocumentTask& task)
{
    const bool asJson = task.form == DocumentTask::Form::Json;
    switch (task.kind) {
    case DocumentTask::Kind::Check:
        return DocumentTasks::check(task.source, asJson);
    case DocumentTask::Kind::Import:
        return DocumentTasks::import(task.source, task.destination, asJson);
    case DocumentTask::Kind::Export:
        break;
    }
    const bool asText = task.form == DocumentTask::Form::Text;
    const auto other = asText ? PhraseExport::Form::Text : PhraseExport::Form::Csv;
    return DocumentTasks::exportPhrases(task.source, task.destination, asJson ? PhraseExport::Form::Json : other);
}

// SPDX-License-Identifier: MIT
#include <core/SoundsDocument.h>
#include <helper/typing/TypedPhrases.h>
#include <platform/input/InputWatcher.h>

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

/// Hears what is typed, as the helper does. Arguments: the document, and the pause after which it forgets, in
/// milliseconds. Says "ready" when it listens, and "heard" at each phrase.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    SoundsDocument::shared().setPath(QString::fromLocal8Bit(argv[1]));
    SoundsDocument::shared().load();
    const auto input = InputWatcher::ofSession();
    TypedPhrases phrases(input.get(), nullptr, std::chrono::milliseconds(std::atoi(argv[2])));
    const auto say = [](const char* word) {
        std::puts(word);
        std::fflush(stdout);
    };
    QObject::connect(&phrases, &TypedPhrases::completed, &application, [say] { say("heard"); });
    phrases.readSettings();
    phrases.setPhrases(std::make_shared<const PhraseIndex>(SoundsDocument::shared().phrases()));
    say("ready");
    return QCoreApplication::exec();
}

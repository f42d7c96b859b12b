#include "FormattedText.h"

Importers::Converters FormattedText::converters()
{
    const auto unreadable = [](const QByteArray&) { return std::optional<QByteArray>(); };
    return {unreadable, unreadable};
}

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <stdexcept>

/// Something that cannot happen while the operations of the class that throws it are used as documented.
class InternalInconsistency final : public std::logic_error
{
public:
    /// @p source is the unit that found it, @p description what it found (may be empty).
    InternalInconsistency(const QString& source, const QString& description);

    const QString& description() const { return m_description; }

private:
    QString m_description;
};

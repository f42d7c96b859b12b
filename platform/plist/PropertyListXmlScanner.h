// SPDX-License-Identifier: MIT
#pragma once

#include "PropertyListForms.h"

#include <string>

namespace PropertyList {

/// The markup level of the XML form: tags and the text between them, in one pass over UTF-8 bytes that must outlive the
/// scanner. It checks what a property list can hold and no more: attributes and declarations are skipped.
class XmlScanner final
{
public:
    enum class Kind { Open, Close, Empty, End };

    struct Tag
    {
        Kind kind = Kind::End;
        std::string_view name;
    };

    /// The text of an element. The bytes are valid until the next call.
    struct Content
    {
        std::string_view bytes;
        bool isAscii = true;
    };

    XmlScanner(QByteArrayView bytes, FirstProblem& problem);

    /// The next tag, after white space, comments, processing instructions and declarations; its kind is End at the end
    /// of the bytes. Nothing after an error.
    std::optional<Tag> nextTag();
    /// Everything up to the closing tag of @p element, with entities resolved, and the closing tag itself. Nothing
    /// after an error.
    std::optional<Content> content(std::string_view element);

    qsizetype offset() const noexcept { return m_at - m_begin; }

    /// Goes on at @p offset, which lies in the bytes.
    void moveTo(qsizetype offset) noexcept { m_at = m_begin + offset; }

    std::string_view rest() const noexcept { return {m_at, size_t(m_end - m_at)}; }

    /// The name in the declaration's encoding attribute; empty where there is none.
    static std::string_view declaredEncoding(std::string_view text);

private:
    bool fail(QStringView what) { return m_problem.note(what, offset()); }

    bool skipPast(std::string_view terminator);
    bool skipDeclaration();
    bool skipToTag();
    bool atClosingTag(std::string_view element) const;
    bool skipClosingTag(std::string_view element, unsigned seen);
    bool skipRestOfTag(Tag& tag);
    unsigned scanPlain();
    std::optional<Content> assembledContent(std::string_view element, std::string_view beginning, unsigned seen);
    bool appendMarkup();
    bool appendEntity();
    bool appendCharacterReference(std::string_view digits);

    const char* m_begin;
    const char* m_at;
    const char* m_end;
    FirstProblem& m_problem;
    std::string m_assembled;
};

} // namespace PropertyList

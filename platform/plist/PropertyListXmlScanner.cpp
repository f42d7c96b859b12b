// SPDX-License-Identifier: MIT
#include "PropertyListXmlScanner.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace PropertyList {

namespace {

enum CharacterClass : unsigned char { Ordinary = 0, Markup = 1, NotAscii = 2, Nul = 4 };

constexpr std::array<unsigned char, 256> makeClasses()
{
    std::array<unsigned char, 256> classes{};
    for (size_t byte = 0; byte < classes.size(); ++byte) {
        classes[byte] = byte >= 0x80 ? NotAscii : Ordinary;
    }
    classes[0] = Nul;
    classes['<'] = Markup;
    classes['&'] = Markup;
    return classes;
}

constexpr std::array<unsigned char, 256> classes = makeClasses();

bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

} // namespace

XmlScanner::XmlScanner(QByteArrayView bytes, FirstProblem& problem)
    : m_begin(bytes.data())
    , m_at(bytes.data())
    , m_end(bytes.data() + bytes.size())
    , m_problem(problem)
{
}

std::string_view XmlScanner::declaredEncoding(std::string_view text)
{
    if (!text.starts_with("<?xml")) {
        return {};
    }
    constexpr std::string_view attribute = "encoding";
    const std::string_view declaration = text.substr(0, text.find("?>"));
    const size_t name = declaration.find(attribute);
    if (name == std::string_view::npos) {
        return {};
    }
    const size_t quote = declaration.find_first_of("\"'", name + attribute.size());
    if (quote == std::string_view::npos) {
        return {};
    }
    const size_t end = declaration.find(declaration[quote], quote + 1);
    return declaration.substr(quote + 1, end == std::string_view::npos ? end : end - quote - 1);
}

bool XmlScanner::skipPast(std::string_view terminator)
{
    const size_t found = rest().find(terminator);
    if (found == std::string_view::npos) {
        return fail(u"a comment, declaration or section has no end");
    }
    m_at += found + terminator.size();
    return true;
}

/// From "<!DOCTYPE" past its ">", which does not count inside quotes or the internal subset.
bool XmlScanner::skipDeclaration()
{
    int brackets = 0;
    for (const char* at = m_at; at != m_end; ++at) {
        if (*at == '"' || *at == '\'') {
            at = std::find(at + 1, m_end, *at);
            if (at == m_end) {
                break;
            }
        } else if (*at == '[') {
            ++brackets;
        } else if (*at == ']') {
            --brackets;
        } else if (*at == '>' && brackets <= 0) {
            m_at = at + 1;
            return true;
        }
    }
    return fail(u"a declaration has no end");
}

bool XmlScanner::skipToTag()
{
    for (;;) {
        while (m_at != m_end && isSpace(*m_at)) {
            ++m_at;
        }
        bool skipped = true;
        if (rest().starts_with("<!--")) {
            skipped = skipPast("-->");
        } else if (rest().starts_with("<?")) {
            skipped = skipPast("?>");
        } else if (rest().starts_with("<!")) {
            skipped = skipDeclaration();
        } else {
            return true;
        }
        if (!skipped) {
            return false;
        }
    }
}

/// From behind the name past the ">", whatever attributes stand between.
bool XmlScanner::skipRestOfTag(Tag& tag)
{
    for (; m_at != m_end; ++m_at) {
        if (*m_at == '>') {
            if (m_at[-1] == '/' && tag.kind == Kind::Open) {
                tag.kind = Kind::Empty;
            }
            ++m_at;
            return true;
        }
        if (*m_at == '"' || *m_at == '\'') {
            m_at = std::find(m_at + 1, m_end, *m_at);
            if (m_at == m_end) {
                break;
            }
        } else if (*m_at == '<') {
            break;
        }
    }
    return fail(u"a tag has no end");
}

std::optional<XmlScanner::Tag> XmlScanner::nextTag()
{
    if (!skipToTag()) {
        return std::nullopt;
    }
    Tag tag;
    if (m_at == m_end) {
        return tag;
    }
    if (*m_at != '<') {
        fail(u"text where a tag should be");
        return std::nullopt;
    }
    ++m_at;
    tag.kind = Kind::Open;
    if (m_at != m_end && *m_at == '/') {
        tag.kind = Kind::Close;
        ++m_at;
    }
    const char* name = m_at;
    while (m_at != m_end && *m_at >= 'a' && *m_at <= 'z') {
        ++m_at;
    }
    tag.name = {name, size_t(m_at - name)};
    if (m_at != m_end && *m_at == '>') {
        ++m_at;
        return tag;
    }
    if (!skipRestOfTag(tag)) {
        return std::nullopt;
    }
    return tag;
}

bool XmlScanner::atClosingTag(std::string_view element) const
{
    const std::string_view text = rest();
    return text.starts_with("</") && text.substr(2).starts_with(element);
}

/// Past the end of an element whose text holds bytes of the classes @p seen.
bool XmlScanner::skipClosingTag(std::string_view element, unsigned seen)
{
    if ((seen & Nul) != 0) {
        return fail(u"a NUL byte in text");
    }
    m_at += 2 + element.size();
    while (m_at != m_end && isSpace(*m_at)) {
        ++m_at;
    }
    if (m_at == m_end || *m_at != '>') {
        return fail(u"a closing tag has no end");
    }
    ++m_at;
    return true;
}

/// Past everything that is no markup; answers the classes of the bytes passed.
unsigned XmlScanner::scanPlain()
{
    unsigned seen = Ordinary;
    for (; m_at != m_end; ++m_at) {
        const unsigned found = classes[static_cast<unsigned char>(*m_at)];
        if (found == Markup) {
            break;
        }
        seen |= found;
    }
    return seen;
}

std::optional<XmlScanner::Content> XmlScanner::content(std::string_view element)
{
    const char* begin = m_at;
    const unsigned seen = scanPlain();
    const std::string_view bytes(begin, size_t(m_at - begin));
    if (!atClosingTag(element)) {
        return assembledContent(element, bytes, seen);
    }
    if (!skipClosingTag(element, seen)) {
        return std::nullopt;
    }
    return Content{bytes, (seen & NotAscii) == 0};
}

std::optional<XmlScanner::Content> XmlScanner::assembledContent(
    std::string_view element, std::string_view beginning, unsigned seen)
{
    m_assembled.assign(beginning);
    while (!atClosingTag(element)) {
        if (m_at == m_end) {
            fail(u"an element has no end");
            return std::nullopt;
        }
        if (!appendMarkup()) {
            return std::nullopt;
        }
        const char* begin = m_at;
        seen |= scanPlain();
        m_assembled.append(begin, m_at);
    }
    if (!skipClosingTag(element, seen)) {
        return std::nullopt;
    }
    // Sections and entities were not classified.
    return Content{m_assembled, false};
}

/// What begins with "<" or "&" inside text.
bool XmlScanner::appendMarkup()
{
    constexpr std::string_view section = "<![CDATA[";
    if (*m_at == '&') {
        return appendEntity();
    }
    if (rest().starts_with("<!--")) {
        return skipPast("-->");
    }
    if (rest().starts_with("<?")) {
        return skipPast("?>");
    }
    if (!rest().starts_with(section)) {
        return fail(u"an element inside text");
    }
    const char* begin = m_at + section.size();
    if (!skipPast("]]>")) {
        return false;
    }
    const std::string_view text(begin, size_t(m_at - 3 - begin));
    m_assembled.append(text);
    return text.find('\0') == std::string_view::npos || fail(u"a NUL byte in text");
}

bool XmlScanner::appendEntity()
{
    constexpr size_t longestEntity = 12;
    static constexpr std::array<std::pair<std::string_view, char>, 5> named{
        {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
    const size_t end = rest().substr(0, longestEntity).find(';');
    if (end == std::string_view::npos) {
        return fail(u"an ampersand that begins no entity");
    }
    const std::string_view name = rest().substr(1, end - 1);
    const auto* found = std::ranges::find(named, name, [](const auto& entity) { return entity.first; });
    if (found != named.end()) {
        m_assembled.push_back(found->second);
    } else if (!name.starts_with('#')) {
        return fail(u"an unknown entity");
    } else if (!appendCharacterReference(name.substr(1))) {
        return false;
    }
    m_at += end + 1;
    return true;
}

bool XmlScanner::appendCharacterReference(std::string_view digits)
{
    const bool hexadecimal = digits.starts_with('x');
    if (hexadecimal) {
        digits.remove_prefix(1);
    }
    unsigned character = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, status] = std::from_chars(digits.data(), end, character, hexadecimal ? 16 : 10);
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    if (status != std::errc() || stop != end || character == 0 || character > 0x10FFFF || surrogate) {
        return fail(u"a reference to no character");
    }
    m_assembled += QStringView(QChar::fromUcs4(character)).toUtf8().toStdString();
    return true;
}

} // namespace PropertyList

/// Message bodies are HTML in which people write freely: what is no known markup is text.
#pragma once

#include <string>
#include <string_view>

namespace vdxcfrw7 {

/// The body with everything escaped that is no known tag or entity. Tags that would fetch something are
/// dropped (a picture leaves its alternative text), and so are those nested deeper than any text needs. Of
/// attributes a few are left, with numbers that are no larger than a text needs.
std::string safe_markup(std::string_view body);

/// Whether laying the body out takes little time and memory: it is not too long, and has neither too many
/// tags nor too large or too deeply nested tables.
bool is_light_markup(std::string_view body);

/// What a reader sees of it: tags gone, entities as their characters, blanks as one.
std::string markup_to_text(std::string_view body);

/// A plain text as HTML that shows the same.
std::string text_to_markup(std::string_view text);

} // namespace vdxcfrw7

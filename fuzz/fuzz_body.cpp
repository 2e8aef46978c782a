// Bodies of messages: any bytes give paragraphs whose spans lie in their texts, and no more of anything
// than was asked for; what was made safe is safe already. What is sought is found as in a text in small
// letters.
#include "body_reader.h"
#include "check.h"
#include "gen_helpers2/strings.h"
#include "html_markup.h"
#include "shown_text.h"
#include "text_matcher.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using namespace vdxcfrw7;

namespace {

struct counts_t
{
    std::size_t bytes = 0;
    std::size_t cells = 0;
};

void walk_flow(const body_flow_t& flow, int depth, counts_t& counts)
{
    check(depth < 100);
    for (const body_item_t& item : flow) {
        const body_paragraph_t& paragraph = item.paragraph;
        check(gen_helpers2::is_valid_utf8(paragraph.text) && gen_helpers2::is_valid_utf8(paragraph.bullet));
        counts.bytes += paragraph.text.size();
        std::size_t end = 0;
        for (const body_span_t& span : paragraph.spans) {
            check(span.begin >= end && span.end >= span.begin && span.end <= paragraph.text.size());
            end = span.end;
        }
        if (!item.table)
            continue;
        for (const auto& row : item.table->rows)
            for (const body_cell_t& cell : row) {
                ++counts.cells;
                walk_flow(cell.flow, depth + 1, counts);
            }
    }
}

void try_search(std::string text, const std::string& needle)
{
    // Long texts are searched another way.
    while (needle.size() > 16 && needle.size() % 4 == 0 && text.size() < 5000)
        text += text;
    const std::string folded = fold(text);
    const std::string sought = fold(needle);
    check(folded.size() == text.size() && fold(folded) == folded);
    std::size_t last = std::string::npos;
    for (int found = 0; found < 4 && !sought.empty(); ++found) {
        const std::size_t from = last + 1; // 0 at first
        const std::size_t at = find_folded(text, sought, from);
        check(at == folded.find(sought, from));
        if (at == std::string::npos)
            break;
        check(find_folded(std::string_view(text).substr(at, sought.size()), sought) == 0);
        last = at;
    }
    // As an expression it may be wrong or too hard; what it finds lies in the text, in order.
    for (int kind = 0; kind < 8; ++kind) {
        text_matcher_t matcher;
        matcher.set(needle, {(kind & 1) != 0, (kind & 2) != 0, (kind & 4) != 0});
        matcher.start(text);
        std::size_t behind = 0;
        for (text_matcher_t::match_t match{}; matcher.next(match); behind = match.end)
            check(match.begin >= behind && match.end > match.begin && match.end <= text.size());
    }
    for (const char *begin = text.data(), *at = begin + text.size(); at > begin;) {
        const char* const end = at;
        const char* before = at = previous(begin, at);
        check(at < end && at >= begin && (decode(before, end), before == end));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string body(reinterpret_cast<const char*>(data), size);
    const std::string text = gen_helpers2::replace_invalid_utf8(body); // as the log gives them
    counts_t counts;
    walk_flow(read_body(text), 0, counts);
    check(counts.bytes <= 4 * text.size() + 100); // an entity is no longer than its name
    check(counts.cells <= text.size());

    try_search(text, text.substr(0, text.find('<')));

    const std::string safe = safe_markup(text);
    check(safe_markup(safe) == safe);
    check(safe.find("<script") == std::string::npos && safe.find("<img") == std::string::npos);
    is_light_markup(text);
    markup_to_text(text);
    check(markup_to_text(text_to_markup("x" + text + "x")).size() >= 2);
    return 0;
}

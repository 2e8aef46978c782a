#include "log_search.h"

#include "vdx/event_log.h"

#include "shown_text.h"

#include <string_view>

namespace vdxcfrw7 {

std::pair<text_place_t, text_place_t> find_text(const CEventLog& log, const log_selection_t& texts,
                                                const text_place_t& start, const std::string& needle,
                                                bool forward)
{
    const auto& elements = log.GetElements();
    std::string storage;
    const std::size_t count = elements.size();
    std::size_t index = start.element->GetIndex();
    std::size_t item = start.item;
    bool first = true;
    // Once round: the item it began with is looked at again at the end, whole.
    for (std::size_t visited = 0; visited <= count;) {
        const CMessageElement& element = *elements[index];
        const bool hidden = item >= text_item_t::first_line &&
                            element.GetLines().at(item - text_item_t::first_line).has(line_t::hidden);
        if (!hidden) {
            const std::string_view shown = text_of(element, item, storage);
            const bool whole = texts.is_whole(element, item);
            std::size_t at;
            if (forward)
                at = whole && first && start.byte > 0
                         ? std::string_view::npos
                         : find_folded(shown, needle, first && !whole ? start.byte : 0);
            else
                at = whole && first && start.byte == 0
                         ? std::string_view::npos
                         : find_last_folded(shown, needle, first && !whole ? start.byte : shown.size());
            if (at != std::string_view::npos && whole)
                return {{&element, item, 0}, {&element, item, 1}};
            if (at != std::string_view::npos)
                return {{&element, item, at}, {&element, item, at + needle.size()}};
        }
        first = false;
        if (forward && ++item >= number_of_items(element)) {
            index = (index + 1) % count;
            item = 0;
            ++visited;
        } else if (!forward && item-- == 0) {
            index = (index + count - 1) % count;
            item = number_of_items(*elements[index]) - 1;
            ++visited;
        }
    }
    return {};
}

} // namespace vdxcfrw7

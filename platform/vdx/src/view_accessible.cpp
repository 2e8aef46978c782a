#include "view_accessible.h"

#include "line_announcer.h"
#include "log_view.h"
#include "text_accessible.h"

#include <gen_helpers2/strings.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/accessible_class.h>
#include <wx_helpers1/guarded.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vdxcfrw7 {
namespace {

constexpr std::size_t longest_name = 2000; // bytes; nobody listens to more of a line
constexpr std::chrono::seconds between_values(5);

std::string shortened(std::string_view text)
{
    return gen_helpers2::replace_invalid_utf8(text.substr(0, longest_name));
}

} // namespace

struct view_accessible_t::impl_t final : text_owner_t
{
    explicit impl_t(log_view_t& the_view)
        : view(the_view), announcer(the_view, [this](std::size_t count) { return describe_new(count); })
    {
    }
    ~impl_t()
    {
        forget_children();
        for (const auto& [part, text] : texts)
            end_text_accessible(text);
    }

    void forget_children()
    {
        for (AtkObject* child : children)
            g_object_unref(child);
        children.clear();
        made = false;
    }

    void append(AtkObject* child) { children.push_back(ATK_OBJECT(g_object_ref(child))); }

    // Only when somebody asks: most windows are never read aloud.
    const std::vector<AtkObject*>& get_children()
    {
        if (made || !view.get_log())
            return children;
        forget_children();
        made = true;
        wx_helpers1::guarded([this] { make_children(); });
        return children;
    }

    void make_children()
    {
        auto before = std::move(texts);
        texts.clear();
        for (const auto& item : view.get_layout().visible_items()) {
            const CMessageElement& element = *item.element;
            if (item.part == log_layout_t::part_t::head) {
                add({&element, text_item_t::header}, ATK_ROLE_HEADING, shortened(element.GetHead().header),
                    before);
                add({&element, text_item_t::body}, ATK_ROLE_LIST_ITEM, shortened(element.GetBodyText()),
                    before);
            } else if (item.part == log_layout_t::part_t::line) {
                add({&element, text_item_t::first_line + item.line}, ATK_ROLE_LIST_ITEM,
                    describe(element, item.line), before);
            } else
                add_tail(element, before);
        }
        if (GtkWidget* news = view.get_news_widget())
            append(gtk_widget_get_accessible(news));
        for (const auto& [part, text] : before)
            end_text_accessible(text);
    }

    void add(const accessible_part_t& part, AtkRole role, const std::string& text,
             std::map<accessible_part_t, AtkObject*>& before)
    {
        if (text.empty())
            return;
        const auto kept = before.find(part);
        AtkObject* made_before = kept != before.end() ? kept->second : nullptr;
        if (made_before)
            before.erase(kept);
        AtkObject* object = made_before ? made_before : make_text_accessible(*this, part, log.get());
        set_accessible_text(object, role, text);
        const auto& words = view.get_log()->GetWords().links;
        if (part.item != accessible_part_t::gauge && words) {
            const std::size_t links = view.count_links({part.element, part.item, 0});
            const std::string note = links ? words(links) : std::string();
            const char* told = atk_object_get_description(object);
            if (note != (told ? told : ""))
                atk_object_set_description(object, note.c_str());
        }
        texts[part] = object;
        append(object);
    }

    void add_tail(const CMessageElement& element, std::map<accessible_part_t, AtkObject*>& before)
    {
        const CGauge& gauge = element.GetGauge();
        if (gauge.IsShown()) {
            const accessible_part_t part{&element, accessible_part_t::gauge};
            add(part, ATK_ROLE_PROGRESS_BAR,
                gauge.GetCaption().empty() ? shortened(element.GetHead().header)
                                           : shortened(gauge.GetCaption()),
                before);
            if (const auto made_one = texts.find(part); made_one != texts.end())
                tell_note(part, made_one->second);
        }
        for (const auto& button : element.GetButtons())
            if (GtkWidget* widget = view.get_button_widget(*button))
                append(gtk_widget_get_accessible(widget));
    }

    std::string describe(const CMessageElement& element, std::size_t index) const
    {
        const line_t& line = element.GetLines().at(index);
        const log_words_t& words = view.get_log()->GetWords();
        const std::string& word = line.severity & line_t::error_bits     ? words.error
                                  : line.severity & line_t::warning_bits ? words.warning
                                                                         : std::string();
        const bool repeated = line.has(line_t::repeated) && words.said_times;
        std::string storage;
        return (word.empty() ? word : word + ": ") + shortened(get_shown_text(line, storage)) +
               (line.is_long() && !line.has(line_t::expanded) && words.first_part
                    ? ", " + words.first_part(line.length)
                    : std::string()) +
               (repeated ? ", " + words.said_times(element.GetLines().get_count(index)) : std::string());
    }

    // Of text_owner_t.
    wxRect get_rect(const accessible_part_t& part) const override
    {
        for (const auto& item : view.get_layout().visible_items()) {
            if (item.element != part.element)
                continue;
            const int left = view.get_layout().text_left(), y = static_cast<int>(item.y);
            const bool is_head = item.part == log_layout_t::part_t::head;
            const int body = is_head ? view.get_layout().body_top(*item.element) : 0;
            if (is_head && part.item == text_item_t::header)
                return wxRect(left, y, view.get_layout().text_width(), body);
            if (is_head && part.item == text_item_t::body)
                return wxRect(left, y + body, view.get_layout().text_width(), item.height - body);
            if ((item.part == log_layout_t::part_t::line &&
                 part.item == text_item_t::first_line + item.line) ||
                (item.part == log_layout_t::part_t::tail && part.item == accessible_part_t::gauge))
                return wxRect(left, y, view.get_layout().text_width(), item.height);
        }
        return wxRect(-1, -1, 0, 0);
    }
    wxPoint get_origin() const override { return view.GetScreenPosition(); }
    bool is_current(const accessible_part_t& part) const override
    {
        const text_place_t place = view.HasFocus() ? view.get_place() : text_place_t();
        return place.element == part.element && place.item == part.item;
    }
    int get_index(AtkObject* text) override
    {
        const auto& all = get_children();
        const auto found = std::find(all.begin(), all.end(), text);
        return found == all.end() ? -1 : static_cast<int>(found - all.begin());
    }
    double get_value(const accessible_part_t& part) const override
    {
        const CGauge& gauge = part.element->GetGauge();
        return 100.0 * gauge.GetValue() / std::max(1, gauge.GetRange());
    }

    bool is_busy(const accessible_part_t& part) const override { return part.element->GetGauge().IsBusy(); }

    void place_changed()
    {
        const text_place_t place = log && view.get_log() ? view.get_place() : text_place_t();
        if (!place.is_set() || !view.HasFocus())
            return;
        get_children();
        const auto found = texts.find({place.element, place.item});
        if (found != texts.end())
            g_signal_emit_by_name(log.get(), "active-descendant-changed", found->second);
    }

    // The last of the lines that came, and how many they were.
    std::string describe_new(std::size_t count) const
    {
        if (!view.get_log() || !view.HasFocus() || !view.get_layout().follows_end())
            return {};
        const auto& elements = view.get_log()->GetElements();
        for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
            const line_store_t& lines = (*element)->GetLines();
            for (std::size_t i = lines.size(); i-- > 0;) {
                const line_t& line = lines.at(i);
                if (line.has(line_t::hidden) || line.has(line_t::status))
                    continue;
                const auto& how_many = view.get_log()->GetWords().lines_came;
                return (count > 1 && how_many ? how_many(count) + " " : std::string()) +
                       describe(**element, i);
            }
        }
        return {};
    }

    static void tell_note(const accessible_part_t& part, AtkObject* object)
    {
        const CGauge& gauge = part.element->GetGauge();
        set_accessible_note(object, shortened(gauge.IsNoteShown() ? gauge.GetNote() : std::string()),
                            gauge.IsBusy());
    }

    // Also to readers that do not ask again.
    void tell_notes()
    {
        for (const auto& [part, text] : texts)
            if (part.item == accessible_part_t::gauge)
                tell_note(part, text);
    }

    void tell_values()
    {
        const auto now = std::chrono::steady_clock::now();
        if (texts.empty() || now - values_told < between_values)
            return;
        values_told = now; // also when there is none: readers may know of very many texts
        for (const auto& [part, text] : texts)
            if (part.item == accessible_part_t::gauge)
                notify_accessible_value(text);
    }

    static impl_t* of(AtkObject* object)
    {
        return static_cast<impl_t*>(wx_helpers1::accessible_class_t::owner_of(object));
    }

    static gint count(AtkObject* object)
    {
        impl_t* self = of(object);
        return self ? static_cast<gint>(self->get_children().size()) : 0;
    }

    static AtkObject* child(AtkObject* object, gint index)
    {
        impl_t* self = of(object);
        if (!self || index < 0 || static_cast<std::size_t>(index) >= self->get_children().size())
            return nullptr;
        return ATK_OBJECT(g_object_ref(self->children[static_cast<std::size_t>(index)]));
    }

    static AtkStateSet* states(AtkObject* object)
    {
        AtkStateSet* set = parent_class->ref_state_set(object);
        atk_state_set_add_state(set, ATK_STATE_MANAGES_DESCENDANTS);
        return set;
    }

    static void init_class(gpointer table, gpointer)
    {
        parent_class = ATK_OBJECT_CLASS(g_type_class_peek_parent(table));
        ATK_OBJECT_CLASS(table)->get_n_children = count;
        ATK_OBJECT_CLASS(table)->ref_child = child;
        ATK_OBJECT_CLASS(table)->ref_state_set = states;
    }

    static wx_helpers1::accessible_class_t& kind()
    {
        static wx_helpers1::accessible_class_t the_kind("VdxLogAccessible", init_class);
        return the_kind;
    }

    static AtkObjectClass* parent_class;

    log_view_t& view;
    wx_helpers1::accessible_class_t::attached_t log;
    line_announcer_t announcer;
    // In visual order; made when somebody asks, until something else is seen.
    std::vector<AtkObject*> children;
    bool made = false;
    bool painted = false; // what is there when the log appears is no news
    std::map<accessible_part_t, AtkObject*> texts;
    std::chrono::steady_clock::time_point values_told{};
};

AtkObjectClass* view_accessible_t::impl_t::parent_class = nullptr;

view_accessible_t::view_accessible_t(log_view_t& view) : m_impl(std::make_unique<impl_t>(view)) {}
view_accessible_t::~view_accessible_t() = default;

void view_accessible_t::attach()
{
    m_impl->log = impl_t::kind().attach(m_impl->view.m_wxwindow, m_impl.get());
    if (!m_impl->log)
        return;
    atk_object_set_role(m_impl->log.get(), ATK_ROLE_LOG);
}

void view_accessible_t::changed()
{
    m_impl->tell_notes();
    m_impl->tell_values(); // of what was asked for once; readers need not ask again
    if (!m_impl->made)
        return;
    m_impl->made = false;
    g_signal_emit_by_name(m_impl->log.get(), "visible-data-changed");
}

void view_accessible_t::painted()
{
    m_impl->painted = true;
}

void view_accessible_t::place_changed()
{
    m_impl->place_changed();
}

void view_accessible_t::found(const text_place_t& place)
{
    std::string storage;
    const bool is_line = place.item >= text_item_t::first_line;
    m_impl->announcer.say(is_line ? m_impl->describe(*place.element, place.item - text_item_t::first_line)
                                  : shortened(text_of(*place.element, place.item, storage)));
}

void view_accessible_t::say(const std::string& text)
{
    m_impl->announcer.say(text);
}

void view_accessible_t::line_added(const line_t& line)
{
    const log_view_t& view = m_impl->view;
    const bool is_heard = view.HasFocus() && m_impl->painted;
    if (!line.has(line_t::hidden) && !line.has(line_t::status) && is_heard)
        m_impl->announcer.line_came();
}

void view_accessible_t::element_removing(const CMessageElement& element)
{
    auto& texts = m_impl->texts;
    for (auto it = texts.begin(); it != texts.end();) {
        if (it->first.element == &element) {
            end_text_accessible(it->second);
            it = texts.erase(it);
        } else
            ++it;
    }
    m_impl->forget_children();
}

void view_accessible_t::set_name(const std::string& name)
{
    wx_helpers1::set_accessible_name(&m_impl->view, name);
    if (m_impl->log)
        atk_object_set_name(m_impl->log.get(), gen_helpers2::replace_invalid_utf8(name).c_str());
}

} // namespace vdxcfrw7

#include "view_accessible.h"

#include "log_view.h"

#include <gen_helpers2/strings.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/accessible_class.h>
#include <wx_helpers1/guarded.h>

#include <gtk/gtk.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vdxcfrw7 {
namespace {

constexpr std::size_t longest_name = 2000; // bytes; nobody listens to more of a line

std::string shortened(std::string_view text)
{
    return gen_helpers2::replace_invalid_utf8(text.substr(0, longest_name));
}

} // namespace

// Adds the visible texts behind the children that the toolkit knows of (buttons).
struct view_accessible_t::impl_t
{
    explicit impl_t(log_view_t& the_view) : view(the_view) {}
    ~impl_t() { forget(); }

    void forget()
    {
        for (AtkObject* text : texts)
            g_object_unref(text);
        texts.clear();
        made = false;
    }

    void add(const std::string& name, AtkRole role)
    {
        AtkObject* text = ATK_OBJECT(g_object_new(ATK_TYPE_OBJECT, nullptr));
        atk_object_set_name(text, name.c_str());
        atk_object_set_role(text, role);
        atk_object_set_parent(text, object.get());
        texts.push_back(text);
    }

    // Only when somebody asks: most windows are never read aloud.
    const std::vector<AtkObject*>& get_texts()
    {
        if (made || !view.get_log())
            return texts;
        made = true;
        wx_helpers1::guarded([this] { make_texts(); });
        return texts;
    }

    void make_texts()
    {
        const log_words_t& words = view.get_log()->GetWords();
        for (const auto& item : view.get_layout().visible_items()) {
            const CMessageElement& element = *item.element;
            if (item.part == log_layout_t::part_t::head) {
                if (!element.GetHead().header.empty())
                    add(shortened(element.GetHead().header), ATK_ROLE_HEADING);
                const std::string body = element.GetBodyText();
                if (!body.empty())
                    add(shortened(body), ATK_ROLE_PARAGRAPH);
            } else if (item.part == log_layout_t::part_t::line) {
                const line_t& line = element.GetLines().at(item.line);
                const std::string& word = line.severity & error_bits    ? words.error
                                          : line.severity & warning_bit ? words.warning
                                                                        : std::string();
                add((word.empty() ? word : word + ": ") + shortened(line.get_text()),
                    line.has(line_t::status) ? ATK_ROLE_STATUSBAR : ATK_ROLE_LABEL);
            } else if (element.GetGauge().IsShown()) {
                const CGauge& gauge = element.GetGauge();
                add(shortened(gauge.GetCaption()) + " " +
                        std::to_string(100 * gauge.GetValue() / gauge.GetRange()) + "%",
                    ATK_ROLE_PROGRESS_BAR);
            }
        }
    }

    static impl_t* of(AtkObject* object)
    {
        return static_cast<impl_t*>(wx_helpers1::accessible_class_t::owner_of(object));
    }

    static gint count(AtkObject* object)
    {
        const gint known = parent_class->get_n_children(object);
        impl_t* self = of(object);
        return known + (self ? static_cast<gint>(self->get_texts().size()) : 0);
    }

    static AtkObject* child(AtkObject* object, gint index)
    {
        const gint known = parent_class->get_n_children(object);
        if (index < known)
            return parent_class->ref_child(object, index);
        impl_t* self = of(object);
        const auto at = static_cast<std::size_t>(index - known);
        if (!self || at >= self->get_texts().size())
            return nullptr;
        return ATK_OBJECT(g_object_ref(self->texts[at]));
    }

    static void init_class(gpointer klass, gpointer)
    {
        parent_class = ATK_OBJECT_CLASS(g_type_class_peek_parent(klass));
        ATK_OBJECT_CLASS(klass)->get_n_children = count;
        ATK_OBJECT_CLASS(klass)->ref_child = child;
    }

    static wx_helpers1::accessible_class_t& kind()
    {
        static wx_helpers1::accessible_class_t the_kind("VdxLogAccessible", init_class);
        return the_kind;
    }

    static constexpr std::uint32_t warning_bit = 2;
    static constexpr std::uint32_t error_bits = 4 | 8;
    static AtkObjectClass* parent_class;

    log_view_t& view;
    wx_helpers1::accessible_class_t::attached_t object;
    std::vector<AtkObject*> texts;
    bool made = false;
};

AtkObjectClass* view_accessible_t::impl_t::parent_class = nullptr;

view_accessible_t::view_accessible_t(log_view_t& view) : m_impl(std::make_unique<impl_t>(view)) {}
view_accessible_t::~view_accessible_t() = default;

void view_accessible_t::attach()
{
    m_impl->object = impl_t::kind().attach(m_impl->view.m_wxwindow, m_impl.get());
    if (m_impl->object)
        atk_object_set_role(m_impl->object.get(), ATK_ROLE_LOG);
}

void view_accessible_t::changed()
{
    if (!m_impl->made)
        return;
    m_impl->forget();
    if (m_impl->object)
        g_signal_emit_by_name(m_impl->object.get(), "visible-data-changed");
}

void view_accessible_t::set_name(const std::string& name)
{
    wx_helpers1::set_accessible_name(&m_impl->view, name);
    if (m_impl->object)
        atk_object_set_name(m_impl->object.get(), gen_helpers2::replace_invalid_utf8(name).c_str());
}

} // namespace vdxcfrw7

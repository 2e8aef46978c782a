#include "text_accessible.h"

#include <pango/pango.h>

#include <algorithm>
#include <vector>

namespace vdxcfrw7 {
namespace {

struct data_t
{
    text_owner_t* owner;
    accessible_part_t part;
    std::string text;
    bool busy = false; // as was told
};

struct object_t
{
    AtkObject parent;
    data_t* data;
};

AtkObjectClass* parent_class = nullptr;

data_t& data_of(gpointer object)
{
    return *reinterpret_cast<object_t*>(object)->data;
}

AtkStateSet* get_states(AtkObject* object)
{
    AtkStateSet* states = parent_class->ref_state_set(object);
    const data_t& data = data_of(object);
    if (!data.owner) {
        atk_state_set_add_state(states, ATK_STATE_DEFUNCT);
        return states;
    }
    for (AtkStateType state :
         {ATK_STATE_ENABLED, ATK_STATE_SENSITIVE, ATK_STATE_VISIBLE, ATK_STATE_SHOWING, ATK_STATE_FOCUSABLE})
        atk_state_set_add_state(states, state);
    if (data.owner->is_current(data.part))
        atk_state_set_add_state(states, ATK_STATE_FOCUSED);
    if (data.part.item == accessible_part_t::gauge && data.owner->is_busy(data.part))
        for (AtkStateType state : {ATK_STATE_BUSY, ATK_STATE_INDETERMINATE})
            atk_state_set_add_state(states, state);
    return states;
}

gint get_index(AtkObject* object)
{
    const data_t& data = data_of(object);
    return data.owner ? data.owner->get_index(object) : -1;
}

void finalize(GObject* object)
{
    delete reinterpret_cast<object_t*>(object)->data;
    G_OBJECT_CLASS(parent_class)->finalize(object);
}

void init_class(gpointer table, gpointer)
{
    parent_class = ATK_OBJECT_CLASS(g_type_class_peek_parent(table));
    ATK_OBJECT_CLASS(table)->ref_state_set = get_states;
    ATK_OBJECT_CLASS(table)->get_index_in_parent = get_index;
    G_OBJECT_CLASS(table)->finalize = finalize;
}

void get_extents(AtkComponent* object, gint* x, gint* y, gint* width, gint* height, AtkCoordType type)
{
    const data_t& data = data_of(object);
    wxRect rect = data.owner ? data.owner->get_rect(data.part) : wxRect(-1, -1, 0, 0);
    if (data.owner && type != ATK_XY_PARENT)
        rect.Offset(data.owner->get_origin());
    *x = rect.x;
    *y = rect.y;
    *width = rect.width;
    *height = rect.height;
}

void init_component(gpointer table, gpointer)
{
    auto* component = static_cast<AtkComponentIface*>(table);
    component->get_extents = get_extents;
    component->get_layer = [](AtkComponent*) { return ATK_LAYER_WIDGET; };
    component->contains = [](AtkComponent* object, gint x, gint y, AtkCoordType type) -> gboolean {
        gint left = 0, top = 0, width = 0, height = 0;
        get_extents(object, &left, &top, &width, &height, type);
        return wxRect(left, top, width, height).Contains(x, y);
    };
}

// Texts count in characters there.
gchar* slice(const std::string& text, gint start, gint end)
{
    const glong length = g_utf8_strlen(text.data(), static_cast<gssize>(text.size()));
    const glong last = end < 0 ? length : std::clamp<glong>(end, 0, length);
    const glong first = std::clamp<glong>(start, 0, last);
    return g_utf8_substring(text.c_str(), first, last);
}

bool begins(const PangoLogAttr& attribute, AtkTextGranularity unit)
{
    switch (unit) {
    case ATK_TEXT_GRANULARITY_WORD:
        return attribute.is_word_start;
    case ATK_TEXT_GRANULARITY_SENTENCE:
        return attribute.is_sentence_start;
    case ATK_TEXT_GRANULARITY_CHAR:
        return attribute.is_cursor_position;
    case ATK_TEXT_GRANULARITY_LINE:
    case ATK_TEXT_GRANULARITY_PARAGRAPH:
        break;
    }
    return false; // a text is one line
}

gchar* get_string_at(AtkText* object, gint offset, AtkTextGranularity unit, gint* start, gint* end)
{
    const std::string& text = data_of(object).text;
    const auto length = static_cast<gint>(g_utf8_strlen(text.data(), static_cast<gssize>(text.size())));
    std::vector<PangoLogAttr> attributes(static_cast<std::size_t>(length) + 1);
    pango_get_log_attrs(text.data(), static_cast<int>(text.size()), -1, pango_language_get_default(),
                        attributes.data(), length + 1);
    const auto starts = [&](gint at) { return begins(attributes[static_cast<std::size_t>(at)], unit); };
    gint first = std::clamp(offset, 0, length);
    gint last = std::min(first + 1, length);
    while (first > 0 && !starts(first))
        --first;
    while (last < length && !starts(last))
        ++last;
    *start = first;
    *end = last;
    return slice(text, first, last);
}

void init_text(gpointer table, gpointer)
{
    auto* text = static_cast<AtkTextIface*>(table);
    text->get_text = [](AtkText* object, gint start, gint end) {
        return slice(data_of(object).text, start, end);
    };
    text->get_string_at_offset = get_string_at;
    text->get_character_at_offset = [](AtkText* object, gint offset) -> gunichar {
        gchar* character = slice(data_of(object).text, offset, offset + 1);
        const gunichar code = g_utf8_get_char(character);
        g_free(character);
        return code;
    };
    text->get_character_count = [](AtkText* object) -> gint {
        const std::string& all = data_of(object).text;
        return static_cast<gint>(g_utf8_strlen(all.data(), static_cast<gssize>(all.size())));
    };
    text->get_caret_offset = [](AtkText*) -> gint { return 0; };
    text->get_n_selections = [](AtkText*) -> gint { return 0; };
    // The place of the whole: lines are looked at one by one.
    text->get_character_extents = [](AtkText* object, gint, gint* x, gint* y, gint* width, gint* height,
                                     AtkCoordType type) {
        get_extents(ATK_COMPONENT(object), x, y, width, height, type);
    };
}

double value_of(AtkValue* object)
{
    const data_t& data = data_of(object);
    return data.owner ? data.owner->get_value(data.part) : 0;
}

void init_value(gpointer table, gpointer)
{
    auto* value = static_cast<AtkValueIface*>(table);
    value->get_value_and_text = [](AtkValue* object, gdouble* number, gchar** text) {
        *number = value_of(object);
        if (text)
            *text = nullptr;
    };
    value->get_range = [](AtkValue*) { return atk_range_new(0, 100, nullptr); };
    value->get_increment = [](AtkValue*) -> gdouble { return 0; };
}

GType make_type(const char* name)
{
    GTypeQuery query;
    g_type_query(ATK_TYPE_OBJECT, &query);
    GTypeInfo info{};
    info.class_size = static_cast<guint16>(query.class_size);
    info.instance_size = sizeof(object_t);
    info.class_init = init_class;
    return g_type_register_static(ATK_TYPE_OBJECT, name, &info, static_cast<GTypeFlags>(0));
}

void add(GType type, GType interface, GInterfaceInitFunc init)
{
    const GInterfaceInfo info{init, nullptr, nullptr};
    g_type_add_interface_static(type, interface, &info);
}

GType text_type()
{
    static const GType type = [] {
        const GType made = make_type("VdxLogText");
        add(made, ATK_TYPE_COMPONENT, init_component);
        add(made, ATK_TYPE_TEXT, init_text);
        return made;
    }();
    return type;
}

GType gauge_type()
{
    static const GType type = [] {
        const GType made = make_type("VdxLogGauge");
        add(made, ATK_TYPE_COMPONENT, init_component);
        add(made, ATK_TYPE_VALUE, init_value);
        return made;
    }();
    return type;
}

} // namespace

AtkObject* make_text_accessible(text_owner_t& owner, const accessible_part_t& part, AtkObject* log)
{
    const bool is_gauge = part.item == accessible_part_t::gauge;
    gpointer object = g_object_new(is_gauge ? gauge_type() : text_type(), nullptr);
    reinterpret_cast<object_t*>(object)->data = new data_t{&owner, part, {}};
    atk_object_set_parent(ATK_OBJECT(object), log);
    return ATK_OBJECT(object);
}

void set_accessible_text(AtkObject* object, AtkRole role, const std::string& text)
{
    data_t& data = data_of(object);
    if (atk_object_get_role(object) != role)
        atk_object_set_role(object, role);
    if (data.text == text)
        return;
    data.text = text;
    atk_object_set_name(object, text.c_str());
}

void set_accessible_note(AtkObject* gauge, const std::string& note, bool busy)
{
    const char* before = atk_object_get_description(gauge);
    if (note != (before ? before : ""))
        atk_object_set_description(gauge, note.c_str());
    data_t& data = data_of(gauge);
    if (data.busy == busy)
        return;
    data.busy = busy;
    for (AtkStateType state : {ATK_STATE_BUSY, ATK_STATE_INDETERMINATE})
        atk_object_notify_state_change(gauge, state, busy);
}

void notify_accessible_value(AtkObject* object)
{
    g_signal_emit_by_name(object, "value-changed", value_of(ATK_VALUE(object)), nullptr);
}

void end_text_accessible(AtkObject* object)
{
    data_of(object).owner = nullptr;
    atk_object_notify_state_change(object, ATK_STATE_DEFUNCT, TRUE);
    g_object_unref(object);
}

} // namespace vdxcfrw7

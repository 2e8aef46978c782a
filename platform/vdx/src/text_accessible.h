#pragma once

#include <atk/atk.h>

#include <wx/gdicmn.h>

#include <cstddef>
#include <string>

namespace vdxcfrw7 {

class CMessageElement;

/// Which part of an entry an accessible object stands for: an item of its texts, or its gauge.
struct accessible_part_t
{
    static constexpr std::size_t gauge = static_cast<std::size_t>(-1);

    const CMessageElement* element = nullptr;
    std::size_t item = 0;

    bool operator<(const accessible_part_t& other) const
    {
        return element != other.element ? element < other.element : item < other.item;
    }
};

/// Who knows about the parts of a log.
class text_owner_t
{
public:
    virtual wxRect get_rect(const accessible_part_t& part) const = 0; ///< in the log's window
    virtual wxPoint get_origin() const = 0;                           ///< of that window on the screen
    virtual bool is_current(const accessible_part_t& part) const = 0; ///< whether the reader is there
    virtual int get_index(AtkObject* text) = 0;                       ///< among the log's children
    virtual double get_value(const accessible_part_t& gauge) const = 0;
    virtual bool is_busy(const accessible_part_t& gauge) const = 0; ///< nobody knows how long

protected:
    ~text_owner_t() = default;
};

/// An object for a text or a gauge of a log, with one reference. It may live longer than the owner, which
/// calls end_text_accessible() before its own end.
AtkObject* make_text_accessible(text_owner_t& owner, const accessible_part_t& part, AtkObject* log);
void set_accessible_text(AtkObject* object, AtkRole role, const std::string& text);
/// What is known beside a gauge's value.
void set_accessible_note(AtkObject* gauge, const std::string& note, bool busy);
/// Says that the gauge's value is another.
void notify_accessible_value(AtkObject* object);
void end_text_accessible(AtkObject* object);

} // namespace vdxcfrw7

#include "vdx/controls.h"

#include <algorithm>
#include <utility>

namespace vdxcfrw7 {

CButton::CButton(int id, const std::string& label, bool is_default, std::function<void()> changed)
    : m_id(id), m_label(label), m_default(is_default), m_changed(std::move(changed))
{
}

void CButton::Enable(bool enable)
{
    if (enable == m_enabled)
        return;
    m_enabled = enable;
    Changed();
}

void CButton::Press()
{
    if (!m_enabled || !IsShown())
        return;
    const auto signal = m_pressed; // a slot may remove this button
    signal.emit(this);
}

CGauge::CGauge(std::function<void()> changed) : m_changed([] {})
{
    Show(false);
    m_changed = std::move(changed);
}

void CGauge::SetRange(int range)
{
    m_range = std::max(1, range);
    SetValue(m_value);
}

void CGauge::SetValue(int value)
{
    value = std::clamp(value, 0, m_range);
    if (value == m_value)
        return;
    m_value = value;
    Changed();
}

void CGauge::SetCaption(const std::string& text)
{
    if (text == m_caption)
        return;
    m_caption = text;
    Changed();
}

void CGauge::SetNote(const std::string& text)
{
    if (text == m_note)
        return;
    m_note = text;
    if (m_note_shown)
        Changed();
}

void CGauge::ShowNote(bool show)
{
    if (show == m_note_shown)
        return;
    m_note_shown = show;
    Changed();
}

void CGauge::SetBusy(bool busy)
{
    if (busy == m_busy)
        return;
    m_busy = busy;
    Changed();
}

} // namespace vdxcfrw7

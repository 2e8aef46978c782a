#pragma once

#include "vdx/visual_element.h"

#include <functional>
#include <string>

namespace vdxcfrw7 {

/// A button of an entry. The view makes a control of the toolkit for it while it can be seen.
class VDX_EXPORT CButton : public CVisualElement
{
public:
    CButton(int id, const std::string& label, bool is_default, std::function<void()> changed);

    int GetId() const { return m_id; }
    /// With '&' before its mnemonic.
    const std::string& GetLabel() const { return m_label; }
    bool IsDefault() const { return m_default; }
    bool IsEnabled() const { return m_enabled; }
    void Enable(bool enable);
    /// Does what the user's press does; nothing when it is disabled or not shown.
    void Press();
    gen_helpers2::signal_t<CButton*>& pressed() { return m_pressed; }

    /// Empty: a button is no part of what a log says.
    std::string GetText() const override { return {}; }

protected:
    void Changed() override { m_changed(); }

private:
    int m_id;
    std::string m_label;
    bool m_default;
    bool m_enabled = true;
    std::function<void()> m_changed;
    gen_helpers2::signal_t<CButton*> m_pressed;
};

/// A bar that fills in whole steps. Hidden until it is shown.
class VDX_EXPORT CGauge : public CVisualElement
{
public:
    explicit CGauge(std::function<void()> changed);

    void SetRange(int range);
    int GetRange() const { return m_range; }
    /// Kept between 0 and the range.
    void SetValue(int value);
    int GetValue() const { return m_value; }
    /// Stands above the bar.
    void SetCaption(const std::string& text);
    const std::string& GetCaption() const { return m_caption; }
    /// Stands below the bar in a row of its own, which is there while it is shown, also for an empty text:
    /// what changes now and then moves nothing.
    void SetNote(const std::string& text);
    const std::string& GetNote() const { return m_note; }
    void ShowNote(bool show);
    bool IsNoteShown() const { return m_note_shown; }
    /// How much there is to do is not known: the bar only shows that something is going on.
    void SetBusy(bool busy);
    bool IsBusy() const { return m_busy; }

    std::string GetText() const override { return m_caption; }

protected:
    void Changed() override { m_changed(); }

private:
    int m_range = 100;
    int m_value = 0;
    std::string m_caption;
    std::string m_note;
    bool m_note_shown = false;
    bool m_busy = false;
    std::function<void()> m_changed;
};

} // namespace vdxcfrw7

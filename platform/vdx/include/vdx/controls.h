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
    /// A disabled button is pale and cannot be pressed.
    void Enable(bool enable);
    /// Does what the user's press does; nothing when it is disabled or not shown.
    void Press();
    /// Raised with the button, whichever way it was pressed.
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

    /// The value at which the bar is full.
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
    /// @since 3.1
    void SetNote(const std::string& text);
    /// @since 3.1
    const std::string& GetNote() const { return m_note; }
    /// Whether the note is drawn.
    /// @since 3.1
    void ShowNote(bool show);
    /// @since 3.1
    bool IsNoteShown() const { return m_note_shown; }
    /// How much there is to do is not known: the bar only shows that something is going on.
    /// @since 3.1
    void SetBusy(bool busy);
    /// @since 3.1
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

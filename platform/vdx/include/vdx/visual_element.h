#pragma once

#include "vdx/export.h"

#include <gen_helpers2/signal.h>

#include <string>

namespace vdxcfrw7 {

/// Anything that an event log shows: the log itself, its entries, their gauges and buttons. Elements are
/// models; a view draws them. GUI thread; an element belongs to the one that made it.
class VDX_EXPORT CVisualElement : public gen_helpers2::subscriber_base_t
{
public:
    CVisualElement() = default;
    ~CVisualElement() override;
    CVisualElement(const CVisualElement&) = delete;
    CVisualElement& operator=(const CVisualElement&) = delete;

    /// What it says, as plain text in UTF-8.
    virtual std::string GetText() const = 0;

    bool IsShown() const { return m_shown; }
    /// The same as HTML; empty where it has no such form.
    /// @since 3.1
    virtual std::string GetHTML() const { return {}; }
    /// Hides the element, or shows it again.
    void Show(bool show);

    /// Asked for by mouse or keyboard: which element, and where in the log's window, in pixels.
    gen_helpers2::signal_t<CVisualElement*, int, int>& context_menu() { return m_context_menu; }

protected:
    /// Something about it looks different now.
    virtual void Changed() {}

private:
    gen_helpers2::signal_t<CVisualElement*, int, int> m_context_menu;
    bool m_shown = true;
};

/// Puts the element's text on the clipboard; false when another program holds it.
VDX_EXPORT bool CopyToClipboard(const CVisualElement& element);
/// Puts a text on the clipboard, in its plain form and as HTML.
VDX_EXPORT bool CopyToClipboard(const std::string& text, const std::string& html);

} // namespace vdxcfrw7

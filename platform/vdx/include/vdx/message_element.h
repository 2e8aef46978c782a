#pragma once

#include "vdx/caption.h"
#include "vdx/controls.h"
#include "vdx/line_store.h"
#include "vdx/visual_element.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vdxcfrw7 {

class CEventLog;

/// What a reader sees of a body in HTML. Any thread.
/// @since 3.1
VDX_EXPORT std::string BodyToText(const std::string& html);

/// What a reader sees of a line: without the sequences that are for terminals. Any thread.
/// @since 3.1
VDX_EXPORT std::string LineToText(std::string_view said);

/// One entry of an event log in its message-box flavour: a header with a picture, a body, lines, a gauge and
/// a row of buttons, from top to bottom. Made by CEventLog::AddElement(). GUI thread.
class VDX_EXPORT CMessageElement : public CVisualElement
{
public:
    ~CMessageElement() override;

    CCaption GetHeader() { return CCaption(*this, CCaption::kind_t::header); }
    CCaption GetBody() { return CCaption(*this, CCaption::kind_t::body); }

    /// Adds a line at the end.
    /// @param copy false: the text lives in an arena that Adopt() gets
    /// @param time when it was said, in milliseconds since 1970
    CCaption AddCaption(int severity, std::string_view text, int image, bool status, bool copy = true,
                        std::int64_t time = line_store_t::no_time);
    /// Counts the last line up when it is this very one and the log makes one line of those.
    /// @return false when it is another
    /// @since 3.1
    bool RepeatLast(int severity, std::string_view text, std::uint64_t count = 1);
    /// The last line was said so many times more.
    /// @since 3.1
    void CountUp(std::uint64_t count);
    /// Takes an arena over in which texts of lines stand that are added then.
    void Adopt(text_arena_t&& arena) { m_lines.adopt(std::move(arena)); }
    /// All lines whose texts were adopted have been added.
    /// @since 3.1
    void AdoptedAll() { m_lines.adopted_all(); }
    const line_store_t& GetLines() const { return m_lines; }
    /// How many blocks of lines could be dropped.
    /// @since 3.1
    std::size_t GetOldBlocks() const
    {
        return m_lines.size() / line_store_t::block_size -
               (m_lines.size() < line_store_t::block_size ? 0 : 1);
    }
    /// Drops so many blocks of its oldest lines. A line in their place says how many have gone in all; what the
    /// reader sees stays where it is.
    /// @since 3.1
    void DropBlocks(std::size_t count, int image);

    CGauge& GetGauge() { return *m_gauge; }
    const CGauge& GetGauge() const { return *m_gauge; }

    /// Adds a button at the end, which belongs to the entry.
    CButton& AddButton(int id, const std::string& label, bool is_default);
    /// Takes all buttons away.
    void ClearButtons();
    const std::vector<std::unique_ptr<CButton>>& GetButtons() const { return m_buttons; }
    /// Shows or hides all its buttons.
    void ShowButtons(bool show);
    /// Whether it has buttons that can be seen.
    bool ButtonsShown() const { return m_buttons_shown && !m_buttons.empty(); }

    /// Header, body and status line.
    std::string GetText() const override;
    /// Text that the clipboard gets after its own, for what only its owner knows.
    void SetMoreText(std::function<std::string()> more) { m_more_text = std::move(more); }

    CEventLog& GetLog() const { return m_log; }

    // For captions and the view.
    /// What stands above the lines.
    struct head_t
    {
        std::string header;
        std::string body;
        bool html = false;
        bool laid_out = false; ///< as HTML; otherwise the body is shown as it is
        wx_helpers1::picture_t picture;
    };
    const head_t& GetHead() const { return m_head; }
    std::string GetBodyText() const;
    /// Whether the filter shows other entries alone.
    /// @since 3.1
    bool IsFilteredOut() const { return m_filtered_out; }
    /// When it, or its first line, came; in milliseconds since 1970.
    /// @since 3.1
    std::int64_t GetBeginning() const;
    std::size_t GetIndex() const { return m_index; }

private:
    friend class CCaption;
    friend class CEventLog;
    friend class log_filter_t;
    friend class log_layout_t;
    friend class log_view_t;

    explicit CMessageElement(CEventLog& log);
    void Changed() override;
    void HeadChanged();
    void BodyChanged();
    void TailChanged();
    void SetLineText(std::size_t line, std::string_view text);
    void ShowRepeats(bool show);
    void Count(std::uint32_t severity, std::uint64_t times);

    CEventLog& m_log;
    head_t m_head;
    line_store_t m_lines;
    std::unique_ptr<CGauge> m_gauge;
    std::vector<std::unique_ptr<CButton>> m_buttons;
    std::function<std::string()> m_more_text;
    static constexpr std::size_t no_line = static_cast<std::size_t>(-1);
    std::size_t m_status_line = no_line;
    std::string m_status_text;   // the line store points to it
    std::string m_dropped_text;  // and to this
    std::uint64_t m_dropped = 0; // lines that have gone
    struct counts_t
    {
        std::uint64_t errors = 0;
        std::uint64_t warnings = 0;
    } m_counts;           // of its lines
    std::int64_t m_began; // in milliseconds since 1970
    std::size_t m_index = 0;
    bool m_buttons_shown = true;
    bool m_filtered_out = false;

    // What the view measured.
    int m_head_height = 0;
    int m_tail_height = 0;
    unsigned int m_head_layout = 0; // the layout in which the head was measured exactly
};

} // namespace vdxcfrw7

#pragma once

#include "vdx/image_list.h"
#include "vdx/log_link.h"
#include "vdx/message_element.h"

#include <wx/gdicmn.h>
#include <wx/weakref.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class wxWindow;

namespace vdxcfrw7 {

class log_layout_t;
class log_view_t;
class work_slices_t;

/// Words that only the product's catalog knows, by the bits of a line's severity; for screen readers.
struct log_words_t
{
    std::string error;
    std::string warning;
    std::string name;                                   ///< of the log itself
    std::function<std::string(std::size_t)> lines_came; ///< so many of them
    /// So many came below what is seen, the worst of them of that severity; for a button.
    std::function<std::string(std::size_t, std::uint32_t)> news;
    std::string go_to_end;                                ///< what that button does
    std::function<std::string(std::uint64_t)> said_times; ///< behind a line: how often it was said in a row
    std::function<std::string(std::uint64_t)> first_part; ///< behind a line of so many bytes that shows less
    std::function<std::string(const std::string&)> link;  ///< the reader came to that one
    std::function<std::string(std::size_t)> links;        ///< a line has so many of them
    std::function<std::string(std::uint64_t)> dropped;    ///< so many lines have gone
};

/// How a text is looked for.
/// @since 3.1
struct find_options_t
{
    bool match_case = false;
    bool whole_words = false;
    bool expression = false; ///< a regular one, in ICU's notation
};

/// An event log: entries one below the other, each with its lines, and the window that shows them.
///
///     auto* log = new vdxcfrw7::CEventLog(parent);
///     auto& entry = log->AddElement();
///     entry.GetHeader().SetText("Collecting samples");
///
/// Use it for the course of long work, of any length: a line costs its text and 24 bytes, and nothing
/// is laid out that nobody sees. The window follows the end as long as it shows the end; otherwise what the
/// reader sees stays where it is. It takes its fonts and colours from ui_settings_t and follows their
/// changes.
///
/// The window is a child of `parent`, which destroys it; the log may outlive it and is then a model
/// without a view. GUI thread.
class VDX_EXPORT CEventLog : public CVisualElement
{
public:
    explicit CEventLog(wxWindow* parent);
    ~CEventLog() override;

    /// Null after the window's end.
    wxWindow* GetWindow() const;
    vdxc7::IImageList* GetImageList();

    /// Adds an empty entry at the end, which belongs to the log.
    CMessageElement& AddElement();
    /// Returns its lines, texts and all: to free many takes time, which the caller may have spent elsewhere.
    line_store_t Remove(CMessageElement& element);
    const std::vector<std::unique_ptr<CMessageElement>>& GetElements() const { return m_elements; }

    /// All texts, entry by entry.
    std::string GetText() const override;
    /// Empty for more than a few megabytes, which no program takes as HTML.
    std::string GetHTML() const override;
    /// The texts that the log shows by itself, already translated.
    void SetWords(const log_words_t& words);
    const log_words_t& GetWords() const { return m_words; }

    /// Has `work` called in slices, now or at later turns of the event loop that let input and painting in.
    /// It does a piece and returns whether more is left; `enough()` tells it when its time is over. `owner`
    /// names it for CancelWork(), and work of an owner that is queued already is not queued again.
    void AddWork(const void* owner, std::function<bool()> work);
    /// Drops the owner's work that has not been done.
    void CancelWork(const void* owner);
    bool HasWork() const;
    /// Whether the running slice has used its time.
    bool enough() const;

    // What the reader does; all of it does nothing without a window.
    /// Shows the end, and follows it from then on.
    void ScrollToEnd();
    bool IsAtEnd() const;
    using find_options_t = vdxcfrw7::find_options_t;
    /// Looks for a text (empty: for nothing any more): all matches are marked, and the first from where the
    /// reader is on is shown. Counting goes on in slices.
    /// @since 3.1
    void SetFind(const std::string& text, const find_options_t& options);
    /// @since 3.1
    bool IsFinding() const;
    /// Selects and shows the next match, or the one before, starting from the selection and going round.
    /// False when there is none.
    /// @since 3.1
    bool FindNext(bool forward);
    /// Both, for a text of which letters of either case are the same.
    bool Find(const std::string& text, bool forward);
    /// How far finding has come.
    /// @since 3.1
    struct find_state_t
    {
        std::uint64_t count;   ///< of matches, so far
        std::uint64_t current; ///< which one is selected, from 1; 0: none
        bool complete;         ///< whether all of the log has been looked at
        bool wrong;            ///< it is no expression
        bool given_up;         ///< the expression took too long
    };
    /// @since 3.1
    find_state_t GetFindState();
    /// The state is another.
    /// @since 3.1
    gen_helpers2::signal_t<>& find_changed() { return m_find_changed; }

    /// Shows only lines that have one of these severity bits (0: all lines) and that contain the text
    /// (empty: all), of one entry (null: all).
    void SetFilter(int severities, const std::string& text, const find_options_t& options = {},
                   const CMessageElement* only = nullptr);
    /// What stands before each line: nothing, the time of day when it was said, or how long after the
    /// beginning of its entry.
    /// @since 3.1
    enum class times_t
    {
        none,
        clock,
        since_entry
    };
    /// What stands before each line.
    /// @since 3.1
    void SetTimes(times_t times);
    /// @since 3.1
    times_t GetTimes() const;
    /// Whether lines that are selected are copied with their times, date and all.
    /// @since 3.1
    void SetCopyTimes(bool copy);
    /// @since 3.1
    bool GetCopyTimes() const;
    /// Whether lines are broken at the window's width, as at first; otherwise they scroll to the side.
    /// @since 3.1
    void SetWrap(bool wrap);
    /// @since 3.1
    bool GetWrap() const;
    /// The size of its texts and pictures in percent of the usual one; kept between 50 and 300.
    /// @since 3.1
    void SetZoom(int percent);
    /// @since 3.1
    int GetZoom() const;
    /// By keyboard or mouse, the user changed one of these.
    /// @since 3.1
    gen_helpers2::signal_t<>& options_changed() { return m_options_changed; }
    /// The user clicked a link, or pressed Enter on one: an address of the web or a path with a line in a
    /// text, or a link of an entry's body. Nothing else happens then.
    /// @since 3.1
    gen_helpers2::signal_t<log_link_t>& link_activated() { return m_link_activated; }
    /// The link at a point of the window; false when there is none.
    /// @since 3.1
    bool GetLinkAt(const wxPoint& point, log_link_t& link);
    /// Whether a line that is said again and again is one line, with a count. Lines that are there become
    /// one, or are shown as often as they were said. Off at first. SetCollapse() on the GUI thread.
    /// @since 3.1
    void SetCollapse(bool collapse);
    /// @since 3.1
    bool GetCollapse() const { return m_collapse.load(std::memory_order_relaxed); }
    /// Whether lines are still being hidden and shown.
    /// @since 3.1
    bool IsFiltering() const;
    /// The one entry that is shown; null: all are.
    /// @since 3.1
    const CMessageElement* GetOnlyElement() const;
    /// How many lines were said with a severity of errors, and how many with one of warnings alone.
    /// @since 3.1
    struct counts_t
    {
        std::uint64_t errors = 0;
        std::uint64_t warnings = 0;
    };
    /// @since 3.1
    const counts_t& GetCounts() const { return m_counts; }
    /// The counts are others.
    /// @since 3.1
    gen_helpers2::signal_t<>& counts_changed() { return m_counts_changed; }
    /// Where the reader is; null before there is an entry.
    /// @since 3.1
    const CMessageElement* GetCurrentElement() const;
    /// What the reader sees, to come back to it.
    /// @since 3.1
    struct reading_t
    {
        const CMessageElement* element = nullptr;
        std::size_t item = 0; ///< the header, the body or a line of it
        int y = 0;            ///< of that, in the window
        bool at_end = true;
    };
    /// @since 3.1
    reading_t GetReading() const;
    /// What was seen is gone when its entry is.
    /// @since 3.1
    void GoBack(const reading_t& reading);
    /// How many lines the filter hides.
    std::size_t GetHiddenCount() const;
    /// Selects all that is shown.
    void SelectAll();
    /// @since 3.1
    bool HasSelection() const;
    std::string GetSelectedText() const;
    std::string GetSelectedHTML() const;
    /// The user wants to search: Ctrl+F, or F3 (next) and Shift+F3 (previous).
    enum class search_t
    {
        open,
        next,
        previous,
        close
    };
    /// Raised with what the user wants of the search bar.
    gen_helpers2::signal_t<search_t>& search_requested() { return m_search_requested; }
    /// The number of hidden lines may be another.
    gen_helpers2::signal_t<>& hidden_changed() { return m_hidden_changed; }

    /// Where things stand, for tests and measurements; all of it up to date.
    struct state_t
    {
        std::int64_t top;    ///< of what is seen, in pixels from the first entry's top
        std::int64_t height; ///< of everything
        bool exact;          ///< whether all heights are measured
        bool at_end;
    };
    state_t GetState();
    /// Has this place, in pixels from the log's beginning, at the top.
    void ScrollTo(std::int64_t top);
    /// Top and height of a line in the window, in pixels.
    wxRect GetLineRect(const CMessageElement& element, std::size_t line);

private:
    friend class CMessageElement;
    friend class CCaption;
    friend class log_view_t;

    class images_t;

    std::unique_ptr<images_t> m_images;
    std::vector<std::unique_ptr<CMessageElement>> m_elements;
    log_words_t m_words;
    std::atomic<bool> m_collapse{false}; // workers that say lines look at it
    std::unique_ptr<work_slices_t> m_slices;
    wxWeakRef<wxWindow> m_window;
    log_view_t* m_view = nullptr; // the same, while it lives
    gen_helpers2::signal_t<search_t> m_search_requested;
    gen_helpers2::signal_t<> m_find_changed;
    gen_helpers2::signal_t<> m_hidden_changed;
    gen_helpers2::signal_t<> m_counts_changed;
    counts_t m_counts;
    gen_helpers2::signal_t<> m_options_changed;
    gen_helpers2::signal_t<log_link_t> m_link_activated;
};

} // namespace vdxcfrw7

#pragma once

#include "commondlg3/export.h"
#include "commondlg3/search_dirs_data.h"

#include <gen_helpers2/signal.h>
#include <vdxpropgrid2/property_grid.h>

#include <functional>
#include <memory>
#include <string>

namespace commondlg3 {

/// Watches a grid of directories: looks at each that is new or was changed, and marks rows that are missing,
/// no directories, or of no use because of a row further up.
///
///     m_checker = std::make_unique<dir_checker_t>(m_grid);
///     m_checker->get_verdict_signal().connect(this, &my_page_t::on_verdict);
///
/// The disk is asked by worker threads, because a network folder can take minutes to answer: rows that wait
/// are marked so after a second, the others go on, and a checker that is destroyed leaves its workers to end
/// by themselves. For a single path field use check_file_or_folder() of its page. Verdicts come to the GUI
/// thread in slices of a few milliseconds, by wx_helpers1::tasks, whose scheduler the host has initialised.
/// GUI thread; the grid must outlive the checker.
class COMMONDLG3_EXPORT dir_checker_t : public gen_helpers2::subscriber_base_t
{
public:
    using examiner_t = std::function<dir_state_t(const std::string&)>;

    /// @param examiner asks the disk, in any thread
    explicit dir_checker_t(vdxpropgrid2::property_grid_t* grid, examiner_t examiner = examine_dir);
    ~dir_checker_t() override;

    /// What a row is besides its text; without a reader its box says whether it is recursive.
    /// @since 3.1
    struct row_kind_t
    {
        bool recursive = false;
        bool skipped = false; ///< see listed_dir_t
    };
    /// Tells what kind of row each is; GUI thread.
    /// @since 3.1
    void set_row_reader(std::function<row_kind_t(const vdxpropgrid2::row_t&)> reader);
    /// Says something of rows about which there is nothing else to say; GUI thread.
    /// @since 3.1
    void set_note_maker(std::function<vdxpropgrid2::row_mark_t(const vdxpropgrid2::row_t&)> maker);

    /// The grid has been given other rows: looks at all of them.
    void restart();
    /// Looks at the row again, if it is there or comes back.
    void forget(vdxpropgrid2::row_key_t key);
    /// Takes what is known so far, waiting at most that long for the rest.
    void finish(int milliseconds);
    /// Unknown for a row that waits and for what is no row.
    dir_state_t get_state(vdxpropgrid2::row_key_t key) const;
    bool is_waiting() const;

    /// A row was looked at: its number, and what was found.
    gen_helpers2::signal_t<int, dir_state_t>& get_verdict_signal();
    /// A row of this key is no longer in the grid.
    gen_helpers2::signal_t<vdxpropgrid2::row_key_t>& get_gone_signal();

private:
    struct impl_t;
    std::unique_ptr<impl_t> m_impl;
};

} // namespace commondlg3

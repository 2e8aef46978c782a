#pragma once

#include "commondlg3/export.h"
#include "commondlg3/inplace_text.h"

#include <gen_helpers2/error_code.h>
#include <gen_helpers2/path.h>

#include <functional>
#include <memory>

namespace commondlg3 {

class inplace_ctrl_impl_t;

/// What a log held: taken out of an inplace_ctrl_t, so that it can be written, or freed, where nobody waits
/// for it. A log of millions of lines changes hands at once.
///
///     if (log->has_changes())
///         log->take_contents().save_later(file);
///
/// Thread: any, one at a time.
/// @since 3.1
class COMMONDLG3_EXPORT inplace_contents_t
{
public:
    inplace_contents_t();
    inplace_contents_t(inplace_contents_t&& other) noexcept;
    inplace_contents_t& operator=(inplace_contents_t&& other) noexcept;
    /// Many lines are freed by a worker.
    ~inplace_contents_t();

    /// Writes them line by line, as inplace_ctrl_t::save() and save_variant_bag() would, in a file of any
    /// size. Either all of it is in the file then, or the file is as it was.
    [[nodiscard]] gen_helpers2::error_code_t save(const gen_helpers2::path_t& file) const;

    /// Does so on a worker and returns at once; nothing is left here. What is given is written in the order
    /// in which it was given. A failure is logged.
    /// @param done called on the worker's thread when it is over; may be empty
    void save_later(const gen_helpers2::path_t& file,
                    std::function<void(const gen_helpers2::error_code_t&)> done = {});

    /// Writes them as a text. Either all of it is in the file then, or the file is as it was: also when
    /// `options.goes_on` gave it up, which is an error with the identifier "gh2::error::Canceled". Files that were
    /// still being read are not among it.
    [[nodiscard]] gen_helpers2::error_code_t save_as(const gen_helpers2::path_t& file, text_format_t format,
                                                     const text_options_t& options = {}) const;

    /// Waits until all that was given to save_later() is written. The process does so at its end.
    static void wait_until_saved();

private:
    friend class inplace_ctrl_impl_t;
    struct data_t;
    std::unique_ptr<data_t> m_data; // null: nothing
};

} // namespace commondlg3

#pragma once

#include "commondlg3/path_messages.h"

#include <gen_helpers2/path_state.h>

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

namespace commondlg3 {

/// What the page knows about a folder for results before the disk is asked.
struct folder_question_t
{
    bool is_checked = false; ///< whether a folder that cannot be used is replaced
    std::string folder;      ///< in which results are to be made
    std::string name_template;
    std::string trouble; ///< why it cannot be used, for people
    std::optional<path_message_t> wrong;
};

struct folder_answer_t
{
    folder_question_t question; ///< `wrong` is known now
    /// What would come of making the folder of the question; only where that is not wrong.
    gen_helpers2::folder_state_t state = gen_helpers2::folder_state_t::usable;
    std::string used; ///< where the next result would be made
    bool is_there = false;
    std::optional<std::uint64_t> free_space;
    std::string next_name; ///< of the next result
};

/// Asks the disk what would become of the next result. `at` is told which place is asked, before it is asked,
/// from the root on: of a place that does not answer everything below it need not be asked. Any thread.
folder_answer_t look_at_folder(const folder_question_t& question,
                               const std::function<void(const std::string& place)>& at);

} // namespace commondlg3

/// What the page says about the next result. GUI thread.
#pragma once

#include "folder_look.h"

#include <string>

namespace commondlg3 {

std::string get_example(const std::string& name);
/// Why results cannot be made in a folder of that state; empty where they can.
std::string sentence_about(gen_helpers2::folder_state_t state);
/// Empty where there is enough, or nobody knows.
std::string sentence_about_little_space(const folder_answer_t& answer);
/// What would become of the next result, beyond its name.
std::string get_outlook(const folder_answer_t& answer);

} // namespace commondlg3

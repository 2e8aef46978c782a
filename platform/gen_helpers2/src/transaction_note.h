#pragma once

#include "gen_helpers2/error_code.h"

#include <string>
#include <vector>

namespace gen_helpers2 {
namespace _internal {

/// A complete file, and the one whose place it is to take.
struct moved_t
{
    std::string from;
    std::string to;
};

/// Where a folder's note is: it says what is being moved, so that the next program can go on where this one
/// was killed.
std::string note_in(const std::string& folder);
error_code_t write_note(const std::string& note, const std::vector<moved_t>& moves);
void remove_note(const std::string& note) noexcept;
/// Goes on. The folder must be locked, or a program that is alive may be at it.
void follow_note(const std::string& note);

} // namespace _internal
} // namespace gen_helpers2

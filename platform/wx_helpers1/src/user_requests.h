#pragma once

#include <cstdint>
#include <map>

namespace wx_helpers1 {

/// Keys that are held down, by their code of the keyboard, and when they were last heard of.
using held_keys_t = std::map<unsigned, std::int64_t>;

const struct input_guard_times_t& get_input_guard_times();
/// The clock of the input guard, in milliseconds.
std::int64_t input_time();

/// From now on it is known what the user did last.
void follow_user_requests();
/// The user has asked for something, by whatever way.
void note_user_request();
/// What was noted asked for nothing.
void forget_user_request();
/// Whether the user asked for something a moment ago; asked again, no.
bool take_user_request();

const held_keys_t& get_held_keys();
/// Whether a press of the key repeats an earlier one. A key whose release was lost is not held for ever.
bool is_repeated(const held_keys_t& held, unsigned key);

} // namespace wx_helpers1

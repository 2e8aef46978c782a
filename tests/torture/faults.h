/// Makes the n-th call of a kind fail, or end the process, wherever in the process it is made: the functions
/// of a program stand before those of the system.
#pragma once

#include <functional>
#include <string>

namespace faults {

enum class call_t
{
    open, ///< with a path, for reading or writing
    stat, ///< with a path or an open file
    read,
    write,
    sync,
    link,
    rename,
    mkdir,
    lock,
    thread, ///< the start of a std::thread
    memory, ///< by new
    count
};

enum class fault_t
{
    fails_on,    ///< this one and all that follow
    fails,       ///< as on a full disk, a broken one, without descriptors or memory
    interrupted, ///< EINTR, as after a signal
    shortened,   ///< reads or writes less than asked for
    killed,      ///< the process ends before the call
    preceded     ///< by something else: see before_due()
};

const char* name_of(call_t call);

/// The n-th call from now on, from 1. One fault at a time.
void arm(call_t call, int n, fault_t fault);
/// @return whether it was made
bool disarm();

/// What precedes a call.
void before_due(std::function<void()> act);

/// How many such calls there were since a fault was armed last.
int count_of(call_t call);

/// From now on only files below this folder have faults, where it is not empty; the toolkit has files too.
void only_below(const std::string& folder);

} // namespace faults

/// Makes the n-th call of a kind fail, or end the process, wherever in the process it is made: the functions
/// of a program stand before those of the system.
#pragma once

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
    memory, ///< by new
    count
};

enum class fault_t
{
    fails,       ///< as on a full disk, a broken one, without descriptors or memory
    interrupted, ///< EINTR, as after a signal
    shortened,   ///< reads or writes less than asked for
    killed       ///< the process ends before the call
};

const char* name_of(call_t call);

/// The n-th call from now on, from 1. One fault at a time.
void arm(call_t call, int n, fault_t fault);
/// @return whether it was made
bool disarm();

} // namespace faults

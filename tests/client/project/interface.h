#pragma once

#include <type_traits>

// Each takes what it is given as it is: the argument list, the result and the constness must be those asked
// for. The address keeps the linker from leaving it out.
extern volatile const void* last_named;

template <class R, class... A, class C>
void named(R (C::*operation)(A...))
{
    last_named = &operation;
}

template <class R, class... A, class C>
void named_const(R (C::*operation)(A...) const)
{
    last_named = &operation;
}

template <class T, class C>
void named_data(T C::*member)
{
    last_named = &member;
}

template <class T>
void named_free(T function)
{
    last_named = &function;
}

void name_messages();
void name_log();
void name_pages();

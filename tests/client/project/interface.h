#pragma once

// Each takes what it is given as it is: the argument list, the result and the constness must be those asked
// for. The address keeps the linker from leaving it out.
extern volatile const void* last_named;

template <class... T>
void named_free(T... functions)
{
    ((last_named = &functions), ...);
}

template <class Function, class... C>
void named(Function C::*... operations)
{
    named_free(operations...);
}

void name_messages();
void name_log();
void name_pages();

#pragma once

#include <string>

namespace vdxcfrw7 {

/// A place that a text of a log names. The log opens nothing: what is to happen is its owner's affair.
/// @since 3.1
struct log_link_t
{
    /// What it leads to.
    enum class kind_t
    {
        file, ///< a file and a line of it
        url   ///< an address of the web
    };

    kind_t kind = kind_t::url;
    std::string target; ///< as the text has it
    std::string path;   ///< of a file; it may be relative to a folder that only the text's maker knows
    int line = 0;       ///< from 1
    int column = 0;     ///< from 1; 0: not told
};

} // namespace vdxcfrw7

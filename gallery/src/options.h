#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace gallery {

/// What the command line asks for.
struct options_t
{
    std::string show;            ///< object to open at once; empty: the main window
    nlohmann::json data;         ///< the record that it opens with; null: a sample
    std::string screenshots_dir; ///< write a picture of each window here and exit
    std::string language;        ///< empty: the desktop's
    std::string theme;           ///< "light", "dark", or empty: the desktop's
    std::string config_dir;      ///< empty: the user's configuration directory
    bool commands = false;       ///< listen to standard input, see commands.h
    bool audit = false;          ///< look for what is wrong with each window, or that of `show`, and exit
    std::string places; ///< "opened" or "changed": print where everything is in each window then, and exit
    bool help = false;
};

/// Reads the command line. An error is one sentence for standard error; empty when there is none.
options_t parse_options(int argc, char** argv, std::string& error);

extern const char* const usage;

} // namespace gallery

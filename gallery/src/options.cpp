#include "options.h"

namespace gallery {

const char* const usage =
    "usage: commondlg3_gallery [--show OBJECT|ENTRY [--data JSON]] [--screenshots DIR] [--audit]\n"
    "                          [--places opened|changed] [--language LL] [--theme light|dark]\n"
    "                          [--config-dir DIR] [--commands]\n";

options_t parse_options(int argc, char** argv, std::string& error)
{
    options_t options;
    for (int i = 1; i < argc && error.empty(); ++i) {
        const std::string name = argv[i];
        if (name == "--help") {
            options.help = true;
            continue;
        }
        if (name == "--audit") {
            options.audit = true;
            continue;
        }
        if (name == "--commands") {
            options.commands = true;
            continue;
        }
        if (i + 1 >= argc) {
            error = "unknown option, or no value after it: " + name;
            break;
        }
        const std::string value = argv[++i];
        if (name == "--show")
            options.show = value;
        else if (name == "--screenshots")
            options.screenshots_dir = value;
        else if (name == "--language")
            options.language = value;
        else if (name == "--theme" && (value == "light" || value == "dark"))
            options.theme = value;
        else if (name == "--places" && (value == "opened" || value == "changed"))
            options.places = value;
        else if (name == "--config-dir")
            options.config_dir = value;
        else if (name == "--data") {
            options.data = nlohmann::json::parse(value, nullptr, false);
            if (!options.data.is_object())
                error = "--data wants a JSON object";
        } else
            error = "unknown option or value: " + name + " " + value;
    }
    return options;
}

} // namespace gallery

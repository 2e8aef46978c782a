#include "gen_helpers2/system_editor.h"

#include "gen_helpers2/program.h"
#include "glib_ptr.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace gen_helpers2 {
namespace {

struct free_apps_t
{
    void operator()(GList* apps) const { g_list_free_full(apps, g_object_unref); }
};

std::string text_of(const char* text)
{
    return text ? text : std::string();
}

text_ptr_t content_type_of(const path_t& file)
{
    gboolean uncertain = FALSE;
    text_ptr_t type(g_content_type_guess(file.as_string().c_str(), nullptr, 0, &uncertain));
    if (!uncertain || !file.is_file())
        return type;
    constexpr std::size_t beginning = 4096;
    std::vector<char> bytes(beginning);
    std::ifstream stream(file.as_filesystem_path(), std::ios::binary);
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (stream.gcount() <= 0)
        return type;
    return text_ptr_t(g_content_type_guess(file.as_string().c_str(),
                                           reinterpret_cast<const guchar*>(bytes.data()),
                                           static_cast<gsize>(stream.gcount()), nullptr));
}

// Where the first word of a command line ends, by the shell's rules of quoting.
std::size_t end_of_first_word(const std::string& text)
{
    char quote = 0;
    for (std::size_t i = text.find_first_not_of(" \t"); i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\\' && quote != '\'')
            ++i;
        else if (quote)
            quote = c == quote ? 0 : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == ' ' || c == '\t')
            return i;
    }
    return text.size();
}

// Takes out the codes that stand for the files to open, an icon, or the name of the entry, with the quotes
// around one.
std::string without_field_codes(const std::string& text)
{
    std::string kept;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            kept += text[i];
            continue;
        }
        if (++i < text.size() && text[i] == '%')
            kept += '%';
        else if (!kept.empty() && (kept.back() == '"' || kept.back() == '\'') && i + 1 < text.size() &&
                 text[i + 1] == kept.back()) {
            kept.pop_back();
            ++i;
        }
    }
    const std::size_t last = kept.find_last_not_of(" \t");
    kept.resize(last == std::string::npos ? 0 : last + 1);
    return kept;
}

// The executable is told as a full path, and the command line begins with it as it stands: arguments that
// users see and edit are what follows.
system_editor_t editor_from(GAppInfo* app)
{
    const std::string command = text_of(g_app_info_get_commandline(app));
    std::vector<std::string> words;
    std::string executable =
        split_command_line(command, words) ? words.front() : text_of(g_app_info_get_executable(app));
    const std::string found = find_program(executable);
    if (!found.empty())
        executable = found;
    return {text_of(g_app_info_get_id(app)), text_of(g_app_info_get_display_name(app)), executable,
            executable + without_field_codes(command.substr(end_of_first_word(command)))};
}

bool is_index_there()
{
    const auto has_index = [](const char* data_folder) {
        return (path_t(data_folder) / "applications/mimeinfo.cache").is_file();
    };
    if (has_index(g_get_user_data_dir()))
        return true;
    for (const gchar* const* folder = g_get_system_data_dirs(); *folder; ++folder)
        if (has_index(*folder))
            return true;
    return false;
}

// How well an application serves a kind: 0 for the kind itself, 1 for one that includes it, 2 not at all.
int distance_to(GAppInfo* app, const char* kind)
{
    int distance = 2;
    const char** types = g_app_info_get_supported_types(app);
    for (; types && *types && distance > 0; ++types)
        if (g_content_type_equals(*types, kind))
            distance = 0;
        else if (g_content_type_is_a(kind, *types))
            distance = 1;
    return distance;
}

// Desktops find applications by an index that a tool of its own writes; where it was never run they know of
// none. Then the entries are read one by one.
void add_those_without_index(const char* kind, std::vector<system_editor_t>& editors)
{
    std::map<std::pair<int, std::string>, system_editor_t> sorted;
    const std::unique_ptr<GList, free_apps_t> apps(g_app_info_get_all());
    for (const GList* at = apps.get(); at; at = at->next) {
        GAppInfo* app = G_APP_INFO(at->data);
        const int distance = distance_to(app, kind);
        const std::string id = text_of(g_app_info_get_id(app));
        const bool known = std::any_of(editors.begin(), editors.end(),
                                       [&](const system_editor_t& editor) { return editor.name == id; });
        if (distance < 2 && !known)
            sorted.emplace(std::make_pair(distance, id), editor_from(app));
    }
    for (auto& entry : sorted)
        editors.push_back(std::move(entry.second));
}

} // namespace

system_editors_status_t get_system_editors(const path_t& file, generic_iterator_t<system_editor_t>& editors,
                                           int type)
{
    editors = generic_iterator_t<system_editor_t>();
    if (file.is_empty() || (type != default_system_editor && type != all_system_editors))
        return system_editors_failed;
    const text_ptr_t kind = content_type_of(file);
    std::vector<system_editor_t> found;
    if (type == default_system_editor) {
        const object_ptr_t<GAppInfo> app(g_app_info_get_default_for_type(kind.get(), FALSE));
        if (app)
            found.push_back(editor_from(app.get()));
    } else {
        const std::unique_ptr<GList, free_apps_t> apps(g_app_info_get_all_for_type(kind.get()));
        for (const GList* at = apps.get(); at; at = at->next)
            found.push_back(editor_from(G_APP_INFO(at->data)));
    }
    if (!is_index_there() && (type == all_system_editors || found.empty()))
        add_those_without_index(kind.get(), found);
    if (type == default_system_editor && found.size() > 1)
        found.resize(1);
    if (found.empty())
        return system_editors_none;
    editors = generic_iterator_t<system_editor_t>(std::move(found));
    return system_editors_found;
}

bool system_editor_needs_terminal(const std::string& name)
{
    if (name.empty() || name.find('\0') != std::string::npos)
        return false;
    const object_ptr_t<GDesktopAppInfo> app(g_desktop_app_info_new(name.c_str()));
    return app && g_desktop_app_info_get_boolean(app.get(), "Terminal");
}

std::string get_system_editor_icon(const std::string& name)
{
    if (name.empty() || name.find('\0') != std::string::npos)
        return std::string();
    const object_ptr_t<GDesktopAppInfo> app(g_desktop_app_info_new(name.c_str()));
    return app ? text_of(text_ptr_t(g_desktop_app_info_get_string(app.get(), "Icon")).get()) : std::string();
}

} // namespace gen_helpers2

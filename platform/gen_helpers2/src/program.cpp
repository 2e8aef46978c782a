#include "gen_helpers2/program.h"

#include "glib_ptr.h"

#include <gio/gio.h>

#include <unistd.h>

#include <memory>

namespace gen_helpers2 {
namespace {

using clock_type = std::chrono::steady_clock;

struct running_t
{
    std::function<void(const program_end_t&)> ended;
    clock_type::time_point start;
};

void on_ended(GObject* source, GAsyncResult* result, gpointer data)
{
    const std::unique_ptr<running_t> running(static_cast<running_t*>(data));
    GSubprocess* process = G_SUBPROCESS(source);
    g_subprocess_wait_finish(process, result, nullptr);
    program_end_t end;
    end.lived = std::chrono::duration_cast<std::chrono::milliseconds>(clock_type::now() - running->start);
    if (g_subprocess_get_if_exited(process))
        end.exit_code = g_subprocess_get_exit_status(process);
    else if (g_subprocess_get_if_signaled(process))
        end.signal = g_subprocess_get_term_sig(process);
    if (running->ended)
        running->ended(end);
}

bool is_plain(const std::string& word)
{
    constexpr char harmless[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=:,./@%";
    return !word.empty() && word.find_first_not_of(harmless) == std::string::npos;
}

} // namespace

bool split_command_line(const std::string& text, std::vector<std::string>& words)
{
    if (text.find('\0') != std::string::npos)
        return false;
    gint count = 0;
    gchar** found = nullptr;
    if (!g_shell_parse_argv(text.c_str(), &count, &found, nullptr))
        return false;
    words.assign(found, found + count);
    g_strfreev(found);
    return true;
}

std::string join_command_line(const std::vector<std::string>& words)
{
    std::string line;
    for (const std::string& word : words) {
        if (!line.empty())
            line += ' ';
        line += is_plain(word) ? word : text_ptr_t(g_shell_quote(word.c_str())).get();
    }
    return line;
}

std::string find_program(const std::string& name)
{
    if (name.empty() || name.find('\0') != std::string::npos)
        return std::string();
    const text_ptr_t found(g_find_program_in_path(name.c_str()));
    return found ? found.get() : std::string();
}

error_code_t start_program(const std::vector<std::string>& words,
                           std::function<void(const program_end_t&)> ended)
{
    if (words.empty() || words.front().empty())
        return error_code_t::invalid_parameter("no program to start");
    std::vector<const gchar*> arguments;
    for (const std::string& word : words)
        arguments.push_back(word.c_str());
    arguments.push_back(nullptr);

    const object_ptr_t<GSubprocessLauncher> launcher(
        g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_STDOUT_SILENCE));
    g_subprocess_launcher_set_child_setup(
        launcher.get(), [](gpointer) { ::setsid(); }, nullptr, nullptr);
    GError* error = nullptr;
    const object_ptr_t<GSubprocess> process(
        g_subprocess_launcher_spawnv(launcher.get(), arguments.data(), &error));
    if (!process) {
        const error_code_t result = error_code_t::io_error(error->message);
        g_error_free(error);
        return result;
    }
    g_subprocess_wait_async(process.get(), nullptr, on_ended,
                            new running_t{std::move(ended), clock_type::now()});
    return error_code_t();
}

} // namespace gen_helpers2

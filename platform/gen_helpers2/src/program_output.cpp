// Programs whose output is read.
#include "gen_helpers2/program.h"

#include "glib_ptr.h"

#include <gio/gio.h>
#include <gio/gunixinputstream.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace gen_helpers2 {
namespace {

using watch_clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int between_looks = 50; // milliseconds
constexpr milliseconds patience(2000);
constexpr milliseconds little_patience(300);
// Somebody who left the session may hold the outputs for ever.
constexpr milliseconds after_killing(500);

// The child says itself who it is: it may have ended before we could ask.
struct session_t
{
    int ends[2] = {-1, -1};
    pid_t id = 0;

    session_t() { opened = ::pipe2(ends, O_CLOEXEC) == 0; }
    ~session_t()
    {
        for (const int end : ends)
            if (end >= 0)
                ::close(end);
    }
    session_t(const session_t&) = delete;
    session_t& operator=(const session_t&) = delete;

    static void begin(gpointer data)
    {
        const pid_t self = ::setsid();
        const auto* session = static_cast<const session_t*>(data);
        while (::write(session->ends[1], &self, sizeof self) < 0 && errno == EINTR) {
        }
    }
    bool find_out() { return ::read(ends[0], &id, sizeof id) == static_cast<ssize_t>(sizeof id) && id > 0; }
    bool is_there() const { return ::kill(-id, 0) == 0; }
    void send(int signal) const { ::kill(-id, signal); }

    bool opened;
};

class watch_t
{
public:
    watch_t(GSubprocess* process, const session_t& session,
            const std::function<void(program_output_t, std::string_view)>& read,
            const std::function<stop_t()>& stop)
        : m_process(process), m_session(session), m_read(read), m_stop(stop)
    {
        const auto descriptor = [](GInputStream* stream) {
            return g_unix_input_stream_get_fd(G_UNIX_INPUT_STREAM(stream));
        };
        m_outputs[0] = {descriptor(g_subprocess_get_stdout_pipe(process)), POLLIN, 0};
        m_outputs[1] = {descriptor(g_subprocess_get_stderr_pipe(process)), POLLIN, 0};
    }

    void run()
    {
        while (is_going_on()) {
            const int ready = ::poll(m_outputs.data(), m_outputs.size(), between_looks);
            if (ready > 0) {
                read_some(m_outputs[0], program_output_t::standard);
                read_some(m_outputs[1], program_output_t::error);
            }
            if (!end_it())
                return;
        }
    }

private:
    bool is_going_on() const
    {
        // The two that are closed are negative: poll() passes over them.
        return m_outputs[0].fd >= 0 || m_outputs[1].fd >= 0 || g_subprocess_get_identifier(m_process) ||
               (m_asked && !m_killed && m_session.is_there());
    }

    void read_some(pollfd& output, program_output_t which)
    {
        if (!output.revents)
            return;
        const ssize_t count = ::read(output.fd, m_bytes.data(), m_bytes.size());
        if (count > 0)
            m_read(which, std::string_view(m_bytes.data(), static_cast<std::size_t>(count)));
        else if (count == 0 || (errno != EINTR && errno != EAGAIN))
            output.fd = -1;
    }

    // False when nobody is waited for any more.
    bool end_it()
    {
        const stop_t wanted = m_killed ? stop_t::force : m_stop();
        const auto now = watch_clock::now();
        if (wanted != stop_t::no && !m_asked) {
            m_asked = true;
            m_last = now + patience;
            m_session.send(SIGTERM);
        }
        if (wanted == stop_t::force && !m_killed)
            m_last = std::min(m_last, now + little_patience);
        if (!m_asked || now < m_last)
            return true;
        if (m_killed)
            return false;
        m_killed = true;
        m_last = now + after_killing;
        m_session.send(SIGKILL);
        return true;
    }

    GSubprocess* m_process;
    const session_t& m_session;
    const std::function<void(program_output_t, std::string_view)>& m_read;
    const std::function<stop_t()>& m_stop;
    std::array<pollfd, 2> m_outputs{};
    std::array<char, 65536> m_bytes{};
    bool m_asked = false;
    bool m_killed = false;
    watch_clock::time_point m_last{};
};

} // namespace

error_code_t watch_program(const std::vector<std::string>& words, const std::string& folder,
                           const std::function<void(program_output_t, std::string_view)>& read,
                           const std::function<stop_t()>& stop, program_end_t& end)
{
    if (words.empty() || words.front().empty())
        return error_code_t::invalid_parameter("no program to start");
    std::vector<const gchar*> arguments;
    for (const std::string& word : words)
        arguments.push_back(word.c_str());
    arguments.push_back(nullptr);

    session_t session;
    if (!session.opened)
        return error_code_t::io_error(g_strerror(errno));
    const object_ptr_t<GSubprocessLauncher> launcher(g_subprocess_launcher_new(
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_PIPE)));
    g_subprocess_launcher_set_child_setup(launcher.get(), session_t::begin, &session, nullptr);
    if (!folder.empty())
        g_subprocess_launcher_set_cwd(launcher.get(), folder.c_str());
    GError* error = nullptr;
    const auto begin = watch_clock::now();
    const object_ptr_t<GSubprocess> process(
        g_subprocess_launcher_spawnv(launcher.get(), arguments.data(), &error));
    if (!process) {
        const error_code_t result = error_code_t::io_error(error->message);
        g_error_free(error);
        return result;
    }
    if (!session.find_out())
        return error_code_t::io_error(g_strerror(errno));
    watch_t(process.get(), session, read, stop).run();
    g_subprocess_wait(process.get(), nullptr, nullptr);
    end.lived = std::chrono::duration_cast<milliseconds>(watch_clock::now() - begin);
    if (g_subprocess_get_if_exited(process.get()))
        end.exit_code = g_subprocess_get_exit_status(process.get());
    else
        end.signal = g_subprocess_get_term_sig(process.get());
    return error_code_t();
}

} // namespace gen_helpers2

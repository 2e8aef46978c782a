#include "transaction_note.h"
#include "atomic_file.h"
#include "gen_helpers2/file.h"
#include "gen_helpers2/log.h"
#include "gen_helpers2/strings.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <sstream>

namespace gen_helpers2 {
namespace _internal {
namespace {

constexpr char first_line[] = "moves 1";
constexpr char last_line[] = "end";

// Whoever could put a note into a folder of several users would choose which files of ours are replaced.
bool is_ours(const std::string& note)
{
    struct stat status;
    return ::lstat(note.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
           (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

/// False for a note that is not whole.
bool parse(const std::string& text, std::vector<moved_t>& moves)
{
    std::istringstream lines(text);
    std::string line;
    if (!std::getline(lines, line) || line != first_line)
        return false;
    while (std::getline(lines, line)) {
        if (line == last_line)
            return true;
        const std::size_t tab = line.find('\t');
        moved_t move;
        if (tab == std::string::npos || !unescape_bytes(line.substr(0, tab), move.from) ||
            !unescape_bytes(line.substr(tab + 1), move.to))
            return false;
        moves.push_back(std::move(move));
    }
    return false;
}

} // namespace

std::string note_in(const std::string& folder)
{
    return folder + "/.moves.note";
}

error_code_t write_note(const std::string& note, const std::vector<moved_t>& moves)
{
    std::string text = std::string(first_line) + '\n';
    for (const moved_t& move : moves)
        text += escape_bytes(move.from) + '\t' + escape_bytes(move.to) + '\n';
    text += std::string(last_line) + '\n';
    atomic_file_t file{path_t(note)};
    file.append(text);
    return file.commit();
}

void remove_note(const std::string& note) noexcept
{
    ::unlink(note.c_str());
}

void follow_note(const std::string& note)
{
    constexpr std::size_t most_bytes = 1 << 20;
    std::string text;
    std::vector<moved_t> moves;
    if (!is_ours(note) || read_whole_file(path_t(note), text, most_bytes).failed())
        return;
    bool all = true;
    if (parse(text, moves))
        for (const moved_t& move : moves)
            // One that is not there any more has been moved.
            if (::rename(move.from.c_str(), move.to.c_str()) != 0 && errno != ENOENT) {
                log_error("file_transaction", file_message("cannot replace", path_t(move.to), errno));
                all = errno == EISDIR || errno == ENOTDIR; // it will never be possible
            }
    if (all)
        remove_note(note);
}

} // namespace _internal
} // namespace gen_helpers2

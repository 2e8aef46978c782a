#include "wx_helpers1/resource_file.h"

#include <gen_helpers2/file.h>

#include <wx/log.h>
#include <wx/mstream.h>
#include <wx/zipstrm.h>

#include <memory>

namespace wx_helpers1 {
namespace {

constexpr char member_separator[] = "#zip:";
constexpr std::size_t max_resource_bytes = 64u << 20;

// Goes through the archive's members and hands over the content of those that are wanted.
bool walk(const std::string& archive, const std::function<bool(const std::string&)>& wants,
          const std::function<void(const std::string&, std::string&&)>& take)
{
    std::string content;
    if (gen_helpers2::read_whole_file(gen_helpers2::path_t(archive), content, max_resource_bytes).failed())
        return false;
    const wxLogNull silent; // the caller tells what is missing, in its own words
    wxMemoryInputStream memory(content.data(), content.size());
    wxZipInputStream zip(memory);
    bool any = false;
    while (const std::unique_ptr<wxZipEntry> entry{zip.GetNextEntry()}) {
        any = true;
        const std::string name = entry->GetInternalName().utf8_string();
        if (!wants(name))
            continue;
        char block[16384];
        std::string bytes;
        while (zip.Read(block, sizeof block).LastRead() > 0) {
            bytes.append(block, zip.LastRead());
            if (bytes.size() > max_resource_bytes)
                return false;
        }
        if (zip.GetLastError() != wxSTREAM_EOF)
            return false;
        take(name, std::move(bytes));
    }
    return any;
}

} // namespace

resource_name_t::resource_name_t(const std::string& file) : archive(file)
{
    const std::size_t at = file.rfind(member_separator);
    if (at != std::string::npos) {
        archive = file.substr(0, at);
        member = file.substr(at + sizeof(member_separator) - 1);
    }
}

bool read_resource(const std::string& file, std::string& bytes)
{
    bytes.clear();
    const resource_name_t name(file);
    if (name.member.empty())
        return gen_helpers2::read_whole_file(gen_helpers2::path_t(file), bytes, max_resource_bytes)
            .succeeded();
    bool found = false;
    const bool whole = walk(
        name.archive, [&](const std::string& member) { return !found && member == name.member; },
        [&](const std::string&, std::string&& content) {
            bytes = std::move(content);
            found = true;
        });
    return whole && found;
}

bool read_archive(const std::string& archive, std::map<std::string, std::string>& members)
{
    std::map<std::string, std::string> read;
    const bool whole = walk(
        archive, [](const std::string&) { return true; },
        [&](const std::string& name, std::string&& content) { read[name] = std::move(content); });
    if (whole)
        members.swap(read);
    return whole;
}

} // namespace wx_helpers1

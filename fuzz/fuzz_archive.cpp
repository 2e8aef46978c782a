// Archives of layouts and pictures: any bytes are read whole or not at all, what was packed comes out as it
// was, and any index of pictures can be asked for one.
#include "check.h"

#include <wx_helpers1/image_loader.h>
#include <wx_helpers1/resource_file.h>

#include <wx/mstream.h>
#include <wx/zipstrm.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

namespace {

std::string packed(const std::string& name, const std::string& content, bool deflated)
{
    wxMemoryOutputStream memory;
    {
        wxZipOutputStream zip(memory, deflated ? -1 : 0);
        zip.PutNextEntry(wxString::FromUTF8(name));
        zip.Write(content.data(), content.size());
    }
    const auto* bytes = static_cast<const char*>(memory.GetOutputStreamBuffer()->GetBufferStart());
    return std::string(bytes, static_cast<std::size_t>(memory.GetLength()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::map<std::string, std::string> members{{"before", ""}};
    std::string content;
    const std::string file = write_scratch("any.dat", bytes);
    if (!wx_helpers1::read_archive(file, members))
        check(members.size() == 1 && members.count("before"));
    for (const auto& [name, unpacked] : members) {
        const std::string whole = file + "#zip:" + name;
        if (!name.empty() && wx_helpers1::resource_name_t(whole).member == name && name != "before")
            check(wx_helpers1::read_resource(whole, content));
    }

    const std::string index =
        write_scratch("index.dat", packed("index.xml", bytes, size % 2 == 0)) + "#zip:index.xml";
    check(wx_helpers1::read_resource(index, content) && content == bytes);
    wx_helpers1::image_loader_t loader(index);
    check(loader.load_static_picture("a").is_empty()); // its file is not in the archive
    check(loader.load_animation("a").is_empty());
    return 0;
}

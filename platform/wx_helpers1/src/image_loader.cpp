#include "wx_helpers1/image_loader.h"

#include "wx_helpers1/resource_file.h"

#include <gen_helpers2/log.h>

#include <wx/log.h>
#include <wx/mstream.h>
#include <wx/xml/xml.h>

#include <cstdio>
#include <map>
#include <vector>

namespace wx_helpers1 {

struct image_entry_t
{
    wxSize size;
    int delay = 0;
    std::vector<std::string> files;
};

namespace {

constexpr char member_separator[] = "#zip:";
constexpr char logger[] = "wx_helpers1.image_loader";

wxSize size_of(const wxXmlNode& node)
{
    int width = 0;
    int height = 0;
    if (std::sscanf(node.GetAttribute("size").utf8_str(), "%d,%d", &width, &height) != 2)
        return wxSize(0, 0);
    return wxSize(width, height);
}

image_entry_t read_entry(const wxXmlNode& node)
{
    image_entry_t entry;
    entry.size = size_of(node);
    long delay = 0;
    node.GetAttribute("delay").ToLong(&delay);
    entry.delay = static_cast<int>(delay);
    for (const wxXmlNode* child = node.GetChildren(); child; child = child->GetNext())
        if (child->GetName() == "frame")
            entry.files.push_back(child->GetNodeContent().Strip(wxString::both).utf8_string());
    if (entry.files.empty())
        entry.files.push_back(node.GetNodeContent().Strip(wxString::both).utf8_string());
    return entry;
}

} // namespace

struct image_loader_t::impl_t
{
    resource_name_t resource;
    std::map<std::string, std::string> members; // those that were asked for
    std::map<std::string, image_entry_t> entries;
    bool loaded = false;

    explicit impl_t(const std::string& file) : resource(file) {}

    bool load()
    {
        if (loaded)
            return true;
        const wxLogNull silent;
        std::string xml;
        wxXmlDocument document;
        if (read_resource(resource.archive + member_separator + resource.member, xml)) {
            wxMemoryInputStream stream(xml.data(), xml.size());
            if (document.Load(stream)) {
                for (const wxXmlNode* node = document.GetRoot()->GetChildren(); node; node = node->GetNext())
                    if (node->GetName() == "object")
                        entries[node->GetAttribute("name").utf8_string()] = read_entry(*node);
                loaded = true;
            }
        }
        if (!loaded)
            gen_helpers2::log_error(logger, "cannot read the image resource " + resource.archive +
                                                ", member " + resource.member);
        return loaded;
    }

    const image_entry_t* find(const std::string& name)
    {
        if (!load())
            return nullptr;
        const auto found = entries.find(name);
        if (found == entries.end()) {
            gen_helpers2::log_error(logger, "no picture named " + name + " in " + resource.archive);
            return nullptr;
        }
        return &found->second;
    }

    // Only what is asked for is unpacked: the first message window needs one picture of sixty.
    wxStaticPicture draw(const std::string& file, const wxSize& size)
    {
        std::string& svg = members[file];
        if (svg.empty())
            read_resource(resource.archive + member_separator + file, svg);
        const wxStaticPicture picture =
            svg.empty() ? wxStaticPicture() : wxStaticPicture::from_svg(svg, size);
        if (picture.is_empty())
            gen_helpers2::log_error(logger, "cannot read the picture " + file + " in " + resource.archive);
        return picture;
    }
};

image_loader_t::image_loader_t(const std::string& resource_file) : m_impl(new impl_t(resource_file)) {}
image_loader_t::~image_loader_t() = default;

wxStaticPicture image_loader_t::load_static_picture(const std::string& name)
{
    const image_entry_t* entry = m_impl->find(name);
    return entry ? m_impl->draw(entry->files.front(), entry->size) : wxStaticPicture();
}

wxAnimation image_loader_t::load_animation(const std::string& name)
{
    const image_entry_t* entry = m_impl->find(name);
    if (!entry)
        return {};
    std::vector<wxStaticPicture> frames;
    for (const std::string& file : entry->files) {
        wxStaticPicture frame = m_impl->draw(file, entry->size);
        if (!frame.is_empty())
            frames.push_back(frame);
    }
    return wxAnimation(std::move(frames), entry->delay);
}

} // namespace wx_helpers1

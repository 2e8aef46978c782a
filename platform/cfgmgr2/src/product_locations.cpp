#include "cfgmgr2/product_locations.h"
#include "cfgmgr2/message_catalog.h"
#include "gen_helpers2/stdpaths.h"

#include <algorithm>
#include <atomic>
#include <dlfcn.h>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <vector>

namespace cfgmgr2 {

namespace {

using gen_helpers2::path_t;

/// Where this library was loaded from. The loader may have come through a link: /lib is one to /usr/lib.
path_t library_directory()
{
    Dl_info library;
    if (!dladdr(reinterpret_cast<const void*>(&IProductLocations::get), &library) || !library.dli_fname)
        return path_t();
    std::error_code unknown;
    return path_t(std::filesystem::canonical(library.dli_fname, unknown)).parent();
}

/// The "share" folder of the installation, or of the build tree, that the running program belongs to, or else
/// the library: below a folder for libraries there may be one for the machine's kind.
path_t find_share_directory()
{
    const path_t program = gen_helpers2::stdpaths::get_executable_dir();
    const path_t near = program / "../share";
    const path_t library = library_directory();
    for (const path_t& share : {near, program / "../../share", library / "../share", library / "../../share"})
        if ((share / "commondlg3").is_directory())
            return share;
    return near;
}

// Looked for once: every window that opens asks for it.
const path_t& share_directory()
{
    static const path_t share = find_share_directory();
    return share;
}

path_t config_directory_for(std::string name)
{
    std::replace(name.begin(), name.end(), '/', '_');
    const path_t user = gen_helpers2::stdpaths::get_user_config_dir();
    const path_t own = user / path_t(name);
    return own.is_empty() || own == user || own == user.parent() ? user / "commondlg3" : own;
}

struct places_t
{
    places_t() : current(&initial) {}

    product_locations_t initial;
    std::atomic<IProductLocations*> current;
    std::mutex mutex;
    /// All that were ever set: somebody may still be using one.
    std::vector<std::shared_ptr<IProductLocations>> kept;
};

places_t& places()
{
    static places_t* const all = new places_t;
    return *all;
}

} // namespace

IProductLocations::~IProductLocations() = default;

IProductLocations* IProductLocations::get()
{
    return places().current.load(std::memory_order_acquire);
}

void IProductLocations::set(std::shared_ptr<IProductLocations> locations)
{
    places_t& all = places();
    {
        const std::lock_guard<std::mutex> lock(all.mutex);
        all.current.store(locations ? locations.get() : &all.initial, std::memory_order_release);
        if (locations && std::find(all.kept.begin(), all.kept.end(), locations) == all.kept.end())
            all.kept.push_back(std::move(locations));
    }
    reset_message_catalogs();
}

path_t product_locations_t::get_resource_directory() const
{
    return resource_directory.is_empty() ? share_directory() / "commondlg3" : resource_directory;
}

path_t product_locations_t::get_locale_directory() const
{
    return locale_directory.is_empty() ? share_directory() / "locale" : locale_directory;
}

std::string product_locations_t::get_product_name() const
{
    return product_name;
}

std::string product_locations_t::get_product_short_name() const
{
    return product_short_name;
}

path_t product_locations_t::get_config_directory() const
{
    return config_directory.is_empty() ? config_directory_for(product_short_name) : config_directory;
}

} // namespace cfgmgr2

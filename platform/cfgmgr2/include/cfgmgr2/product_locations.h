#pragma once

#include "cfgmgr2/export.h"
#include "gen_helpers2/path.h"

#include <memory>
#include <string>

namespace cfgmgr2 {

/// Where the host product has its files, and what it is called. A host sets its own at start, before the
/// first dialog.
///
/// \code
/// auto where = std::make_shared<cfgmgr2::product_locations_t>();
/// where->product_name = "Product";
/// where->resource_directory = "/opt/product/share/commondlg3";
/// cfgmgr2::IProductLocations::set(where);
/// \endcode
///
/// Thread: get() and set() are safe in any thread; the operations must be as well.
class CFGMGR2_EXPORT IProductLocations
{
public:
    virtual ~IProductLocations();

    /// The folder of the resource archives.
    virtual gen_helpers2::path_t get_resource_directory() const = 0;
    /// The folder that holds `<language>/LC_MESSAGES/<name>.mo`.
    virtual gen_helpers2::path_t get_locale_directory() const = 0;
    /// For people, UTF-8; may be empty.
    virtual std::string get_product_name() const = 0;
    virtual std::string get_product_short_name() const = 0;
    /// The user's folder for settings; need not exist.
    virtual gen_helpers2::path_t get_config_directory() const = 0;

    /// Never null. Until a host sets its own: no names, and the folders found beside the running program, or else
    /// beside the library. The object stays until the process ends, even when another is set later.
    static IProductLocations* get();

    /// Null brings the initial one back. Catalogs already loaded are forgotten.
    static void set(std::shared_ptr<IProductLocations> locations);
};

/// Locations given by value. A folder left empty is the one found beside the running program, or else beside
/// the library, where a program that is not installed with it finds it.
class CFGMGR2_EXPORT product_locations_t : public IProductLocations
{
public:
    gen_helpers2::path_t resource_directory;
    gen_helpers2::path_t locale_directory;
    std::string product_name;
    std::string product_short_name;
    gen_helpers2::path_t config_directory;

    gen_helpers2::path_t get_resource_directory() const override;
    gen_helpers2::path_t get_locale_directory() const override;
    std::string get_product_name() const override;
    std::string get_product_short_name() const override;
    gen_helpers2::path_t get_config_directory() const override;
};

} // namespace cfgmgr2

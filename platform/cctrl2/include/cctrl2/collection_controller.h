#pragma once

#include "cctrl2/export.h"

#include <memory>
#include <string>

namespace cctrl2 {

/// What the product's collector says about the results that it makes. A host that collects sets its own at
/// start.
///
/// Thread: get() and set() are safe in any thread; the operations must be as well.
class CCTRL2_EXPORT ICollectionController
{
public:
    virtual ~ICollectionController();

    /// The name of a result directory for users who have chosen none.
    /// @param as_template true: with a run of '@' in place of the running number; false: with the first
    /// number
    virtual std::string getDefaultResultDirectoryName(bool as_template) const = 0;
    /// An identifier of the analysis that would be run next, such as "hotspots".
    virtual std::string getAnalysisType() const = 0;
    /// The ending of the file in a result directory that opens it, with its dot.
    virtual std::string getResultExtension() const = 0;

    /// Never null. The object stays until the process ends, even when another is set later.
    static ICollectionController* get();
    /// Null brings the initial one back.
    static void set(std::shared_ptr<ICollectionController> controller);
};

} // namespace cctrl2

#include "cctrl2/collection_controller.h"

#include <rdmgr2/result_directory_manager.h>

#include <mutex>
#include <vector>

namespace cctrl2 {
namespace {

class default_controller_t : public ICollectionController
{
public:
    std::string getDefaultResultDirectoryName(bool as_template) const override
    {
        const std::string pattern = "result_@@@";
        return as_template ? pattern : rdmgr2::ResultDirectoryManager::fillResultDirectoryPattern(pattern, 1);
    }
    std::string getAnalysisType() const override { return "hotspots"; }
    std::string getResultExtension() const override { return ".vbx"; }
};

struct controllers_t
{
    std::mutex mutex;
    default_controller_t initial;
    ICollectionController* current = &initial;
    // All that were ever set: somebody may still be using one.
    std::vector<std::shared_ptr<ICollectionController>> kept;
};

controllers_t& controllers()
{
    static controllers_t* const all = new controllers_t;
    return *all;
}

} // namespace

ICollectionController::~ICollectionController() = default;

ICollectionController* ICollectionController::get()
{
    controllers_t& all = controllers();
    const std::lock_guard<std::mutex> lock(all.mutex);
    return all.current;
}

void ICollectionController::set(std::shared_ptr<ICollectionController> controller)
{
    controllers_t& all = controllers();
    const std::lock_guard<std::mutex> lock(all.mutex);
    all.current = controller ? controller.get() : &all.initial;
    if (controller)
        all.kept.push_back(std::move(controller));
}

} // namespace cctrl2

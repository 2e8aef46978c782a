#include "picture_taker.h"

#include "window_walk.h"

#include <wx_helpers1/painted.h>
#include <wx_helpers1/text.h>

#include <wx/filename.h>
#include <wx/toplevel.h>

#include <cstdio>
#include <memory>
#include <utility>

namespace gallery {

void take_pictures(const std::string& folder, std::function<void(int)> done)
{
    wxFileName::Mkdir(wx_helpers1::to_wx(folder), wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
    const auto failed = std::make_shared<int>(0);
    walk_windows(
        walk_of_entries(),
        [folder, failed](const std::string& name, wxTopLevelWindow& window) {
            const std::string file = folder + "/" + name + ".png";
            if (wx_helpers1::save_picture(window, file))
                return;
            std::fprintf(stderr, "cannot write %s\n", file.c_str());
            ++*failed;
        },
        [failed, done = std::move(done)] { done(*failed); });
}

} // namespace gallery

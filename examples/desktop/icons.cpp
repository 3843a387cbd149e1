#include "examples/desktop/icons.h"

#include "examples/desktop/embedded.h"
#include "examples/desktop/resource.h"

namespace desktop {
namespace {

// GIO's names for the picture of a type, the most fitting first.
std::vector<std::string> NamesOf(const std::string& type) {
    std::vector<std::string> names;
    const Owned<GIcon> icon(g_content_type_get_icon(type.c_str()));
    if (!G_IS_THEMED_ICON(icon.get())) return names;
    for (const char* const* name = g_themed_icon_get_names(G_THEMED_ICON(icon.get())); *name; ++name)
        names.emplace_back(*name);
    return names;
}

}  // namespace

const Picture& Icons::Of(const File& file) {
    const auto [place, added] = byType_.try_emplace(file.type);
    if (added) place->second = Load(file);
    return place->second;
}

Picture Icons::Load(const File& file) const {
    std::vector<std::string> names = NamesOf(file.type);
    names.emplace_back(file.folder ? "folder" : "text-x-generic");
    const std::string path = theme_.Find(names, kIconSide);
    if (const Pixels pixels = path.empty() ? Pixels() : LoadPixels(path, kIconSide)) return IconFrom(pixels);
    return EmbeddedPicture(file.folder ? IDP_FOLDER : IDP_FILE);
}

}  // namespace desktop

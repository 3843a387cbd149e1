#include "examples/desktop/embedded.h"

namespace desktop {

Picture EmbeddedPicture(UINT id) {
    QKImage loader;
    return loader.SetImage(id, u"PNG") ? Picture(loader.GetImage()->Clone()) : Picture();
}

}  // namespace desktop

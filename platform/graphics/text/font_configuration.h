// The faces of this system, and how this library renders them.
#pragma once

typedef struct _FcConfig FcConfig;

namespace platform {

// The system's font configuration with our rendering put over it: the desktop's and the user's preferences
// decide which faces there are and what replaces a missing one, but text is grey and slightly hinted
// everywhere, so that a picture does not depend on whose machine drew it. For the whole process, from every
// thread; never null.
FcConfig* FontConfiguration();

}  // namespace platform

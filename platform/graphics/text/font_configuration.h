// The faces of this system, and how this library renders them.
#pragma once

typedef struct _FcConfig FcConfig;
typedef struct _FcPattern FcPattern;

namespace platform {

// The font configuration of the process, which is read once for everybody in it: the desktop's and the user's
// preferences decide which faces there are and what replaces a missing one. For the whole process, from every
// thread; never null.
FcConfig* FontConfiguration();

// Makes a face that is chosen for the pattern grey and slightly hinted, whatever the preferences say, so that
// a picture does not depend on whose machine drew it. Faces that others in the process choose are rendered as
// they were.
void RenderAlike(FcPattern* wanted);

}  // namespace platform

// What the system says about itself.
#include <platform/window.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/window/core/display.h"

namespace {

BOOL GetWorkArea(RECT* area) {
    platform::WindowSystem* system = platform::EnsureSystem();
    if (system) *area = system->Monitors().front().work;
    return system != nullptr;
}

BOOL GetIconMetrics(ICONMETRICSW* metrics, UINT size) {
    if (metrics->cbSize != sizeof(ICONMETRICSW) || (size != 0 && size != sizeof(ICONMETRICSW))) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    constexpr std::u16string_view kFace = u"sans-serif";
    *metrics = {sizeof(ICONMETRICSW), 75, 75, TRUE, {}};
    metrics->lfFont.lfHeight = -12;
    metrics->lfFont.lfWeight = 400;
    std::copy(kFace.begin(), kFace.end(), std::begin(metrics->lfFont.lfFaceName));
    return TRUE;
}

}  // namespace

BOOL SystemParametersInfoW(UINT action, UINT size, LPVOID value, UINT) {
    if (value && action == SPI_GETWORKAREA) return GetWorkArea(static_cast<RECT*>(value));
    if (value && action == SPI_GETICONMETRICS) return GetIconMetrics(static_cast<ICONMETRICSW*>(value), size);
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

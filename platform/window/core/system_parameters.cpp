// What the system says about itself.
#include <platform/window.h>

#include <algorithm>
#include <iterator>
#include <string_view>

BOOL SystemParametersInfoW(UINT action, UINT size, LPVOID value, UINT) {
    auto* metrics = static_cast<ICONMETRICSW*>(value);
    if (action != SPI_GETICONMETRICS || !metrics || metrics->cbSize != sizeof(ICONMETRICSW) ||
        (size != 0 && size != sizeof(ICONMETRICSW))) {
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

#include "platform/graphics/gdi_objects.h"

namespace platform {
namespace {

template <class Table, class H>
auto ShareFrom(Table GdiTables::*table, H handle) {
    GdiTables& gdi = Gdi();
    auto object = [&] {
        const std::lock_guard lock(gdi.mutex);
        return (gdi.*table).Share(handle);
    }();
    if (!object) SetLastError(ERROR_INVALID_HANDLE);
    return object;
}

}  // namespace

// Never destroyed: a host's static objects may still hold handles when the process ends.
GdiTables& Gdi() {
    static GdiTables* const tables = new GdiTables;
    return *tables;
}

std::shared_ptr<DeviceContext> ShareContext(HDC context) {
    return ShareFrom(&GdiTables::contexts, context);
}

std::shared_ptr<Region> ShareRegion(HRGN region) {
    return ShareFrom(&GdiTables::regions, region);
}

std::shared_ptr<GdiBrush> ShareBrush(HBRUSH brush) {
    return ShareFrom(&GdiTables::brushes, brush);
}

}  // namespace platform

// Dialog templates and resource modules made in memory, so that a test may break them in any place.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platform/resources.h>

namespace maker {

using Bytes = std::vector<std::uint8_t>;

inline void Put16(Bytes& out, unsigned value) {
    out.push_back(static_cast<std::uint8_t>(value & 0xFF));
    out.push_back(static_cast<std::uint8_t>((value >> 8) & 0xFF));
}
inline void Put32(Bytes& out, std::uint32_t value) {
    Put16(out, value & 0xFFFF);
    Put16(out, value >> 16);
}
inline void PutText(Bytes& out, std::u16string_view text) {
    for (const char16_t unit : text)
        Put16(out, unit);
    Put16(out, 0);
}
inline void Align(Bytes& out) {
    while (out.size() % 4 != 0)
        out.push_back(0);
}

struct Control {
    std::uint32_t id = 0;
    int x = 0, y = 0, width = 0, height = 0;
    std::uint32_t style = 0x50000000;  // a visible child
    unsigned atom = 0x82;              // STATIC; 0 for a class by name
    std::u16string className;
    std::u16string title;
};

struct Dialog {
    bool extended = true;
    std::uint32_t style = 0x80000000;  // a popup
    std::uint32_t exStyle = 0;
    int x = 0, y = 0, width = 100, height = 50;
    std::u16string title;
    unsigned pointSize = 0;  // 0: no font
    unsigned weight = 400;
    std::u16string face;
    std::vector<Control> controls;
};

inline void PutPlace(Bytes& out, int x, int y, int width, int height) {
    for (const int value : {x, y, width, height})
        Put16(out, static_cast<unsigned>(value) & 0xFFFF);
}

inline void PutControl(Bytes& out, const Control& control, bool extended) {
    Align(out);
    if (extended) {
        Put32(out, 0);
        Put32(out, 0);
        Put32(out, control.style);
    } else {
        Put32(out, control.style);
        Put32(out, 0);
    }
    PutPlace(out, control.x, control.y, control.width, control.height);
    if (extended)
        Put32(out, control.id);
    else
        Put16(out, control.id & 0xFFFF);
    if (control.atom != 0) {
        Put16(out, 0xFFFF);
        Put16(out, control.atom);
    } else {
        PutText(out, control.className);
    }
    PutText(out, control.title);
    Put16(out, 0);
}

inline Bytes Pack(const Dialog& dialog) {
    Bytes out;
    const std::uint32_t style = dialog.style | (dialog.pointSize != 0 ? 0x40u : 0u);
    if (dialog.extended) {
        Put16(out, 1);
        Put16(out, 0xFFFF);
        Put32(out, 0);
        Put32(out, dialog.exStyle);
        Put32(out, style);
    } else {
        Put32(out, style);
        Put32(out, dialog.exStyle);
    }
    Put16(out, static_cast<unsigned>(dialog.controls.size()));
    PutPlace(out, dialog.x, dialog.y, dialog.width, dialog.height);
    Put16(out, 0);
    Put16(out, 0);
    PutText(out, dialog.title);
    if (dialog.pointSize != 0) {
        Put16(out, dialog.pointSize);
        if (dialog.extended) {
            Put16(out, dialog.weight);
            Put16(out, 0x0100);
        }
        PutText(out, dialog.face);
    }
    for (const Control& control : dialog.controls)
        PutControl(out, control, dialog.extended);
    return out;
}

// A module of dialog templates by number, registered and current while this lives.
class Module {
  public:
    explicit Module(const std::vector<std::pair<unsigned, Bytes>>& templates, unsigned type = 5) {
        PutEntry(0, 0, {});
        for (const auto& [id, bytes] : templates)
            PutEntry(type, id, bytes);
        handle_ = RegisterModuleResources(file_.data(), file_.size());
        before_ = AfxGetResourceHandle();
        AfxSetResourceHandle(handle_);
    }
    ~Module() {
        AfxSetResourceHandle(before_);
        UnregisterModuleResources(handle_);
    }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    HMODULE Handle() const { return handle_; }

  private:
    void PutEntry(unsigned type, unsigned id, const Bytes& data) {
        Put32(file_, static_cast<std::uint32_t>(data.size()));
        Put32(file_, 32);
        Put32(file_, 0xFFFF | (type << 16));
        Put32(file_, 0xFFFF | (id << 16));
        for (int i = 0; i < 4; ++i)
            Put32(file_, 0);
        file_.insert(file_.end(), data.begin(), data.end());
        Align(file_);
    }
    Bytes file_;
    HMODULE handle_;
    HMODULE before_;
};

}  // namespace maker

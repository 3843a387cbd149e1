// Dialog templates and resource files made in memory, so that a test may break them in any place.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platform/resources.h>

#include "support/bytes.h"

namespace kit {

// A number in the place of a name.
inline ByteWriter& PutOrdinal(ByteWriter& out, unsigned number) {
    return out.Word(0xFFFF).Word(number);
}

// What the resource compiler would write.
class ResourceFile {
  public:
    ResourceFile() { Open(); }
    // The empty entry that opens every file.
    ResourceFile& Open() { return Add(0, 0, {}); }
    ResourceFile& Add(unsigned type, unsigned number, const Bytes& data) {
        ByteWriter names;
        PutOrdinal(PutOrdinal(names, type), number);
        return AddEntry(names.Take(), data);
    }
    ResourceFile& Add(unsigned type, std::u16string_view name, const Bytes& data) {
        ByteWriter names;
        PutOrdinal(names, type).Wide(name).Align();
        return AddEntry(names.Take(), data);
    }
    // Whatever a test puts behind the entries so far.
    ByteWriter& Raw() { return out_; }
    Bytes Take() { return out_.Take(); }

  private:
    ResourceFile& AddEntry(const Bytes& names, const Bytes& data) {
        out_.Long(static_cast<std::uint32_t>(data.size()));
        out_.Long(static_cast<std::uint32_t>(8 + names.size() + 16));
        out_.Append(names).Fill(16, 0).Append(data).Align();
        return *this;
    }
    ByteWriter out_;
};

struct TemplateControl {
    std::uint32_t id = 0;
    int x = 0, y = 0, width = 0, height = 0;
    std::uint32_t style = 0x50000000;  // a visible child
    unsigned atom = 0x82;              // STATIC; 0 for a class by name
    std::u16string className;
    std::u16string title;
};

struct Template {
    bool extended = true;
    std::uint32_t style = 0x80000000;  // a popup
    std::uint32_t exStyle = 0;
    int x = 0, y = 0, width = 100, height = 50;
    std::u16string title;
    unsigned pointSize = 0;  // 0: no font
    unsigned weight = 400;
    std::u16string face;
    std::vector<TemplateControl> controls;
};

inline void PutPlace(ByteWriter& out, int x, int y, int width, int height) {
    for (const int value : {x, y, width, height})
        out.Word(static_cast<unsigned>(value) & 0xFFFF);
}

inline void PutControl(ByteWriter& out, const TemplateControl& control, bool extended) {
    out.Align();
    if (extended)
        out.Fill(8, 0).Long(control.style);
    else
        out.Long(control.style).Long(0);
    PutPlace(out, control.x, control.y, control.width, control.height);
    if (extended)
        out.Long(control.id);
    else
        out.Word(control.id & 0xFFFF);
    if (control.atom != 0)
        PutOrdinal(out, control.atom);
    else
        out.Wide(control.className);
    out.Wide(control.title).Word(0);
}

inline Bytes Pack(const Template& dialog) {
    ByteWriter out;
    const std::uint32_t style = dialog.style | (dialog.pointSize != 0 ? 0x40U : 0U);
    if (dialog.extended)
        out.Word(1).Word(0xFFFF).Long(0).Long(dialog.exStyle).Long(style);
    else
        out.Long(style).Long(dialog.exStyle);
    out.Word(static_cast<unsigned>(dialog.controls.size()));
    PutPlace(out, dialog.x, dialog.y, dialog.width, dialog.height);
    out.Long(0).Wide(dialog.title);
    if (dialog.pointSize != 0) {
        out.Word(dialog.pointSize);
        if (dialog.extended) out.Word(dialog.weight).Word(0x0100);
        out.Wide(dialog.face);
    }
    for (const TemplateControl& control : dialog.controls)
        PutControl(out, control, dialog.extended);
    return out.Take();
}

// A module of resources by number, registered and current while this lives.
class ResourceModule {
  public:
    explicit ResourceModule(const std::vector<std::pair<unsigned, Bytes>>& resources, unsigned type = 5) {
        ResourceFile file;
        for (const auto& [id, bytes] : resources)
            file.Add(type, id, bytes);
        file_ = file.Take();
        handle_ = RegisterModuleResources(file_.data(), file_.size());
        before_ = AfxGetResourceHandle();
        AfxSetResourceHandle(handle_);
    }
    ~ResourceModule() {
        AfxSetResourceHandle(before_);
        UnregisterModuleResources(handle_);
    }
    ResourceModule(const ResourceModule&) = delete;
    ResourceModule& operator=(const ResourceModule&) = delete;
    HMODULE Handle() const { return handle_; }

  private:
    Bytes file_;
    HMODULE handle_;
    HMODULE before_;
};

}  // namespace kit

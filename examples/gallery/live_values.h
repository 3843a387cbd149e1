// A table of names and values, of static texts, that follows what it shows.
#pragma once

#include <functional>
#include <vector>

#include "examples/gallery/dressing.h"
#include "examples/gallery/item_set.h"

namespace gallery {

class LiveValues {
  public:
    using Reader = std::function<CString()>;

    // An empty table in its well, which grows with each row.
    void Open(CQKDialogBase& dialog, CPoint corner, int width);
    void Row(LPCWSTR name, Reader read);
    // Asks all readers, before a frame.
    void Refresh();
    void Close();
    int Bottom() const { return place_.bottom; }

  private:
    struct Value {
        QKStaticText* text;
        Reader read;
    };

    CQKDialogBase* dialog_ = nullptr;
    CRect place_;
    Well* well_ = nullptr;
    std::vector<Value> values_;
    ItemSet items_;
};

// Values as readers give them.
CString Number(int value);
CString YesNo(int flag);
CString StatusOf(const QKItemBase& item);

}  // namespace gallery

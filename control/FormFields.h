#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// The fields of the forms as the conversion knows them: values. The core sets them and calls `Changed`; what
// shows the field on a screen sets them in its turn when the operator types or clicks.

struct TextField {
    std::u16string Text;
    std::function<void()> Changed;

    void SetText(std::u16string text);
};

// A text box of many lines that holds a million characters; what would go beyond is cut.
struct AreaField {
    static constexpr std::size_t kCapacity = 1000000;

    std::u16string Text;
    // Called with what was put behind the old text.
    std::function<void(std::u16string_view)> Appended;
    // Called when the whole text is another one.
    std::function<void()> Changed;

    void AppendText(std::u16string_view text);
    void SetText(std::u16string_view text);
};

// A check box: 0 or 1.
struct CheckField {
    std::int32_t Value = 0;
    std::function<void()> Changed;

    void SetValue(std::int32_t value);
};

struct ListField {
    std::vector<std::u16string> Items;
    std::function<void()> Changed;

    void AddItem(std::u16string item);
};

struct ButtonField {
    bool Enabled = true;
    std::function<void()> Changed;

    void SetEnabled(bool enabled);
};

}  // namespace tessaly

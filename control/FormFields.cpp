#include "control/FormFields.h"

#include <utility>

namespace tessaly {

namespace {

void Tell(const std::function<void()>& changed) {
    if (changed) changed();
}

}  // namespace

void TextField::SetText(std::u16string text) {
    Text = std::move(text);
    Tell(Changed);
}

void AreaField::AppendText(std::u16string_view text) {
    const std::u16string_view fitting = text.substr(0, kCapacity - Text.size());
    Text += fitting;
    if (Appended) Appended(fitting);
}

void AreaField::SetText(std::u16string_view text) {
    Text = text.substr(0, kCapacity);
    Tell(Changed);
}

void CheckField::SetValue(std::int32_t value) {
    Value = value;
    Tell(Changed);
}

void ListField::AddItem(std::u16string item) {
    Items.push_back(std::move(item));
    Tell(Changed);
}

void ButtonField::SetEnabled(bool enabled) {
    Enabled = enabled;
    Tell(Changed);
}

}  // namespace tessaly

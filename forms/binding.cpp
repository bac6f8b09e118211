#include "forms/binding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "forms/text.h"

namespace tessaly {

void Bind(TextField& field, QLineEdit* box) {
    field.Changed = [&field, box] { box->setText(ToQt(field.Text)); };
    field.Changed();
    QObject::connect(box, &QLineEdit::textEdited, box,
                     [&field](const QString& text) { field.Text = FromQt(text); });
}

void Bind(TextField& field, QComboBox* box) {
    field.Changed = [&field, box] { box->setEditText(ToQt(field.Text)); };
    field.Changed();
    // Typing and picking from the list alike change the text of the edit field.
    QObject::connect(box, &QComboBox::editTextChanged, box,
                     [&field](const QString& text) { field.Text = FromQt(text); });
}

void Bind(CheckField& field, QCheckBox* box) {
    field.Changed = [&field, box] { box->setChecked(field.Value != 0); };
    field.Changed();
    QObject::connect(box, &QCheckBox::toggled, box, [&field](bool isOn) { field.Value = isOn ? 1 : 0; });
}

void Bind(ListField& field, QComboBox* box) {
    field.Changed = [&field, box] {
        const bool isFirst = box->count() == 0;
        for (auto at = static_cast<std::size_t>(box->count()); at < field.Items.size(); ++at) {
            box->addItem(ToQt(field.Items[at]));
        }
        // The first entry would be shown as picked.
        if (isFirst) box->setCurrentIndex(-1);
    };
    field.Changed();
}

}  // namespace tessaly

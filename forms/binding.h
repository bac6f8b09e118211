#pragma once

#include "control/FormFields.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace tessaly {

// Ties a widget to a field of the conversion: it shows the field's value, and what the operator types goes
// into the field at once.
void Bind(TextField& field, QLineEdit* box);
void Bind(TextField& field, QComboBox* box);

// Ties the widget's tick to the field; what a click does besides is the form's matter.
void Bind(CheckField& field, QCheckBox* box);

// A list that only grows.
void Bind(ListField& field, QComboBox* box);

}  // namespace tessaly

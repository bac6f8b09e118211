#pragma once

#include <QString>
#include <QWidget>

#include "control/modDefinitions.h"

namespace tessaly {

// Checks the board with the fields of a state as they stand, and opens what it found as a page in the
// browser. Gives the page's file, which lies in the user's folder for temporary files; empty when the check
// was cancelled. The state itself stays as it is.
QString CheckBoard(QWidget* owner, const ConversionState& fields);

}  // namespace tessaly

#pragma once

#include <QFont>

namespace tessaly {

// The heavy face of labels and captions, and the plain face, at a size of the design. Where the system's own
// font is larger than usual, they are larger by as much.
QFont HeavyFont(double points);
QFont PlainFont(double points);

}  // namespace tessaly

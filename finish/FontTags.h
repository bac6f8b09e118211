#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// Reads the size, font and color tags of one message in the order in which they stand, and gives for each
// what the forum understands: sizes by name, several attributes as tags within each other, and nothing for
// what it would show as it stands.
class FontTags {
  public:
    enum class Kind { kSize, kFont, kColor };

    // The tag that opens with this text between its brackets, such as "size=2 color=red".
    std::u16string Open(Kind kind, std::u16string_view inner);

    // A closing tag. One of "font" closes whatever is open when no font is: it was a bare closing on the
    // page.
    std::u16string Close(Kind kind);

    // What closes all that is open at the message's end.
    std::u16string CloseAll();

  private:
    struct Opened {
        std::size_t number;  // in the order of opening
        std::u16string closing;
    };

    // The kind whose innermost tag is the innermost of all; none when nothing is open.
    std::vector<Opened>* Innermost();

    std::array<std::vector<Opened>, 3> opened_;
    std::size_t count_ = 0;
};

}  // namespace tessaly

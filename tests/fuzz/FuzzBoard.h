#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "control/modDefinitions.h"

namespace tessaly::fuzzing {

// A board in a temporary folder of this process, with a state that is ready for any step of a run. Each call
// of NewState begins anew; the folder stays for the next one.
class FuzzBoard {
  public:
    FuzzBoard();
    ~FuzzBoard();
    FuzzBoard(const FuzzBoard&) = delete;
    FuzzBoard& operator=(const FuzzBoard&) = delete;

    std::unique_ptr<ConversionState> NewState() const;

    // Writes a file below the folder; the name has "/" between its steps.
    void Write(const std::string& name, std::string_view bytes) const;
    void Remove(const std::string& name) const;
    std::u16string Path(const std::string& name) const;

  private:
    std::string folder_;
};

// The one board of a target.
const FuzzBoard& Board();

// The input as text, a byte a unit.
std::u16string AsText(std::string_view bytes);

std::string_view AsBytes(const std::uint8_t* data, std::size_t size);

// The input's parts between bytes 0xFF, as many as asked for; what is missing is empty.
std::vector<std::string_view> Parts(std::string_view bytes, std::size_t count);

// Ends the process when a text has grown beyond what its input allows.
void ExpectAtMost(std::size_t size, std::size_t most);

}  // namespace tessaly::fuzzing

#pragma once

#include <cstddef>
#include <string_view>

#include "control/modDefinitions.h"

namespace tessaly {

// Cleans what an earlier run left in the output folder and opens the two logs. Does nothing after a cancel.
void mybbOpenOutputFiles(ConversionState& state);

// Appends one row to a family's stream, which comes into being with its first row. A row that would take the
// file beyond the split size (in characters, line ends counted) goes to the next file, and the full file is
// saved and gets its statement; with `noSplit` never. An empty table name means no statement.
void WriteFileLine(ConversionState& state, std::u16string_view line, OutputFile& file,
                   std::u16string_view table, bool noSplit);

// Appends one LOAD DATA statement for a finished import file to the SQL script.
void CreateImportSQL(ConversionState& state, std::u16string_view name, std::u16string_view table);

// Writes one whole text in `Charset` to one file, replacing an old one.
void WriteFileData(ConversionState& state, std::u16string_view path, std::u16string_view text);

// Saves a family's open stream under its name, writes its statement unless the table name is empty, and lets
// the stream go. Does nothing for a family without a stream; raises what saving raises.
void FinishOutputFile(ConversionState& state, OutputFile& file, std::u16string_view table);

// Finishes what is still open, the logs last. Fails silently, family by family.
void mybbCloseOutputFiles(ConversionState& state);

// Builds the name of a family's first file; the number is put in where "XXX" stands in capitals.
void BeginOutputFile(OutputFile& file, std::u16string_view templateName);

}  // namespace tessaly

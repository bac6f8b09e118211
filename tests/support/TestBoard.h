#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "control/modDefinitions.h"
#include "tests/support/TemporaryFolder.h"

namespace tessaly::testing {

// A small board on disk and a program's state that is ready to convert it. All lies in one temporary folder:
//
//     source/discus/messages/        the public pages
//     source/discus_admin_1/         the member file; secure/ below it
//     program/Docs/                  Redirect.html and the character files
//     output/                        what a run leaves
//
// The state is as after the form's load with an empty .ini file, with the folders and addresses filled in:
// website "http://old.example/discus", forum "http://new.example/", administrator "Admin", 1 default user,
// 7 default groups, split size 50. Message boxes are kept in `messages`.
class TestBoard {
  public:
    TestBoard();

    // "messages/12/12.html" -> the page's name below source/discus.
    void WriteBoardFile(std::string_view bytes) const;
    void WritePage(std::string_view name, std::string_view bytes) const;
    void WriteSecurePage(std::string_view name, std::string_view bytes) const;
    void WriteMembers(std::string_view bytes) const;

    // One click on Convert.
    void Convert();

    // The bytes of a file of the output folder; empty text and a failed test when it is not there.
    std::string Output(std::string_view name) const;
    bool HasOutput(std::string_view name) const;
    // Log.txt as text.
    std::u16string Log() const;
    // The rows of an import file, without line ends.
    std::vector<std::string> Rows(std::string_view name) const;

    TemporaryFolder folder;
    ConversionState state;
    std::vector<std::u16string> messages;
    std::vector<const TextField*> focused;
};

// A page's head as the readers want it: title, Topic and Me tags, and the link back that gives the subject.
std::string PageHead(std::string_view topic, std::string_view me, std::string_view title,
                     std::string_view subject);

// One Post section.
std::string Post(int number, std::string_view name, std::string_view time, std::string_view body);

// One Top section that leads to a page below /discus/messages/.
std::string Top(int number, std::string_view address, std::string_view text);

// A board file of one category that holds these tops.
std::string BoardFile(std::string_view category, const std::vector<int>& tops);

}  // namespace tessaly::testing

#include "bench/BenchBoard.h"

#include <fstream>
#include <random>

#include "platform/TextStream.h"
#include "platform/paths.h"
#include "reader/SpecialCharacters.h"
#include "text/numbers.h"

namespace tessaly::bench {

namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kSentences =
    u"It has walnut veneer and one knob is missing, but the dial glass is whole. The first thing I did was "
    u"to "
    u"pull the chassis and brush out thirty years of dust. Then I brought it up slowly on the variable "
    u"transformer, with a lamp in series; nothing smoked. The mains lead was perished and had to go.<BR>\n"
    u"Most of the paper capacitors leak, which does not surprise anyone here. I measured every resistor as "
    u"well and only two were out by more than twenty per cent. Has someone a drawing of the tuning cord? ";

std::u16string MakeMessage() {
    std::u16string message(kSentences);
    message +=
        u"The smell was \"interesting\", as my wife put it&#8230; I have <b>replaced</b> them all, and it "
        u"plays. "
        u"Thanks to Georg&nbsp;H&uuml;bner for the valves! ";
    message += kSentences;
    message +=
        u"<font color=\"ff0000\">Mind the <font size=\"-1\">high</font> voltage</font> and see "
        u"<a href=\"http://old.example/discus/messages/3/110.html\">the diary</a>, or "
        u"<A HREF=\"http://elsewhere.example/valves.html\" TARGET=\"_top\">this list</A>. "
        u"<img src=\"http://old.example/discus/clipart/happy.gif\" alt=\":)\" border=0><BR>\n";
    message += kSentences;
    return message;
}

std::u16string MakePost(int number) {
    const std::u16string id = ToText(number);
    return u"<!--Post: " + id + u"--><!--Time: " + ToText(1043846797 + number) +
           u"-->\n<!--p:--><tr bgcolor=\"#f5f5ff\"><td valign=top><a name=\"POST" + id +
           u"\"></a><a href=\"http://old.example/cgi-bin/discus/show.cgi?tpc=3&post=" + id +
           u"\"><img src=\"http://old.example/discus/icons/mark_top.gif\" height=12 width=12 border=0 "
           u"alt=\"\"></a><font face=\"Verdana,Arial,Helvetica\" size=\"2\"><b><!--email-->"
           u"<a href=\"mailto:anna@mail.example\" target=\"_blank\"><!--/email--><!--name-->Anna " +
           ToText(number % 7) +
           u"<!--/name--></a></b></font><!--field:posts--><!--/field--></td>\n<td valign=top><!--Text-->" +
           std::u16string(Message()) + u"<!--/Text--></td></tr>\n<!--/Post: " + id + u"-->\n";
}

void Write(const fs::path& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

fs::path MakeTemporaryFolder() {
    fs::path folder;
    std::random_device random;
    do {
        folder = fs::temp_directory_path() / ("tessaly-bench-" + std::to_string(random()));
    } while (!fs::create_directory(folder));
    return folder;
}

}  // namespace

std::u16string_view Message() {
    static const std::u16string message = MakeMessage();
    return message;
}

std::u16string_view PlainMessage() {
    static const std::u16string plain =
        std::u16string(kSentences) + std::u16string(kSentences) + std::u16string(kSentences);
    return plain;
}

std::u16string Page(int posts) {
    std::u16string page =
        u"<html>\n<head>\n<title>Radios</title>\n<!--Topic: 3/Radios-->\n<!--Me: "
        u"110/Diary-->\n</head>\n<body>\n"
        u"<a href=\"http://old.example/discus/messages/3/110.html?1043846797\">Diary</a>\n<table>\n";
    for (int number = 1; number <= posts; ++number) page += MakePost(number);
    return page + u"</table>\n</body>\n</html>\n";
}

BenchBoard::BenchBoard() : folder_(MakeTemporaryFolder()) {
    const fs::path messages = folder_ / "messages";
    fs::create_directories(messages / "3");
    fs::create_directories(folder_ / "secure");
    fs::create_directories(folder_ / "output" / "attachments");
    Write(messages / "3" / "3.html", "page");
    Write(messages / "3" / "110.html", "page");
    Write(messages / "3" / "manual.pdf", std::string(4096, 'x'));

    state.ShowMessage = [](std::u16string_view) {};
    state.ProgramFolder = platform::ToPathText(fs::path(TESSALY_SOURCE_DIR));
    state.DiscusRootFolder = platform::ToPathText(folder_) + u"\\";
    state.DiscusMessageFolder = platform::ToPathText(messages) + u"\\";
    state.DiscusSecureMessageFolder = platform::ToPathText(folder_ / "secure") + u"\\";
    state.DiscusMainFolder = state.DiscusRootFolder;
    state.mybbOutputFolder = platform::ToPathText(folder_ / "output") + u"\\";
    state.mybbAttachmentsFolder = platform::ToPathText(folder_ / "output" / "attachments");
    state.DiscusWebsite = u"http://old.example/discus";
    state.mybbForumAddr = u"http://new.example/";
    state.Charset = u"iso-8859-1";
    state.optCreateAttachments = true;
    state.optFindDiscusSpecialCharacters = true;
    state.Depth = 1;
    state.DataIndex.resize(2);
    state.MemberPostCounts.resize(101);
    DiscusGetReplaceableCharacterArray(state, state.Charset);
}

BenchBoard::~BenchBoard() {
    fs::remove_all(folder_);
}

void BenchBoard::DropRows() {
    for (OutputFile* const file : {&state.PostsFile, &state.AttachmentsFile, &state.InternalLinksFile}) {
        file->Stream.reset();
        file->Size = 0;
    }
    state.PageAttachmentRows = {};
}

}  // namespace tessaly::bench

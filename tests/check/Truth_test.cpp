#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "platform/charset.h"
#include "tests/support/CheckedBoard.h"

namespace tessaly {
namespace {

using testing::CheckedBoard;
using testing::PageHead;
using testing::Post;
using testing::Top;

// Makes up small boards of all kinds. One seed makes one board.
class BoardMaker {
  public:
    explicit BoardMaker(unsigned seed) : random_(seed) {}

    int Number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
    bool Chance(int percent) { return Number(100) < percent; }

    template <std::size_t count>
    std::string OneOf(const char* const (&texts)[count]) {
        return texts[random_() % count];
    }

    // What stands in posts, whole and sound.
    std::string SoundBody() {
        static constexpr const char* kPieces[] = {
            "Hello, <b>all</b>.<BR>\n",
            "<font size=2>small <font color=ff0000>red</font></font> ",
            "it&#8217;s &auml; &bogus; &amp; x ",
            "<a href=\"http://elsewhere.example\">there</a> ",
            "<a href=\"http://old.example/discus/messages/1/3.html\">a topic</a> ",
            "<a href=\"http://old.example/discus/messages/1/file-a.pdf\">a file</a> ",
            "<a href=\"http://old.example/discus/show.cgi?tpc=1\">a script</a> ",
            "<img src=\"http://old.example/discus/messages/1/p-1.jpg\" alt=\"p\"> ",
            "<img src=\"http://old.example/discus/clipart/happy.gif\" alt=\":-)\"> ",
            ("<!--attachment: x--><a href=\"http://old.example/discus/messages/1/file-a.pdf\" target=x>a</a>"
             "<!--/attachment--> "),
            "</font> 1 < 2, \"quoted\", \xC3\xA4\xE2\x82\xAC \xFF `a` c:\\d ",
        };
        std::string body;
        for (int piece = Number(4); piece >= 0; --piece) body += OneOf(kPieces);
        return body;
    }

    std::string SoundPost() {
        static constexpr const char* kNames[] = {"Anna", "bert", "", "Visitor", "<b>Carla</b>, the \"cook\""};
        return Post(++posts_, OneOf(kNames), std::to_string(1043846797 + Number(2000) - 1000), SoundBody());
    }

    std::string SoundMember(int number) {
        static constexpr const char* kComputers[] = {"10.0.0.1", "", "0", "192.168.1.5.6"};
        static constexpr const char* kGroups[] = {"", "Editors", "Editors/Moderators", "/"};
        static constexpr const char* kTimes[] = {"", "1012345678", "never", " 7 "};
        const std::string name = Chance(20) ? "anna" : "member" + std::to_string(number);
        return name + ":pw:" + name + "@host.example:" + (Chance(50) ? "" : "Name, real") +
               ":::" + OneOf(kTimes) + ":" + OneOf(kComputers) + "::" + OneOf(kGroups) + "\n";
    }

    // What ends a run, wherever among posts it stands.
    std::string FatalPost() {
        static constexpr const char* kBodies[] = {
            "<font size=2><font color=red>x</font>",
            "</font> <font size=1>a</font> <font size=2>b",
            "<img src=http://old.example/discus/messages/1/p-1.jpg alt=p>",
            "<!--attachment: x--><a href=\"file-a.pdf\" target=_blank>a</a><!--/attachment-->",
            "<!--attachment: x--><a href=file-a.pdf>a</a><!--/attachment-->",
            "x <a href=\"page\">see /discus/messages/1</a>",
            "x <a href=\"/secure\"></a> <a href=\"x\">/secure/</a>",
        };
        static constexpr const char* kTimes[] = {"yesterday", "", "2147483648", "1e99", "1 2"};
        if (Chance(30)) return Post(++posts_, "Anna", OneOf(kTimes), "Hello");
        return Post(++posts_, "Anna", "1043846797", OneOf(kBodies));
    }

    std::string FatalMember() {
        static constexpr const char* kLines[] = {
            "zoe:too:short\n",
            "zoe:pw:z@host.example:Zoe:::99999999999:10.0.0.1:0:Editors\n",
            "zoe:pw:z@host.example:Zoe:::0:10.0.1:0:Editors\n",
            "zoe:pw:z@host.example:Zoe:::0:10..1.1:0:Editors\n",
            "zoe:pw:z@host.example:Zoe:::0:proxy.of.the.house:0:Editors\n",
            "zoe:pw:z@host.example:Zoe:::0:10.0.0.1:0:Bread, cakes\n",
            "zoe:pw:z@host.example:Zoe:::0:10.0.0.1:0: Editors\n",
        };
        return OneOf(kLines);
    }

    std::string FatalSection() {
        static constexpr const char* kSections[] = {
            ("<!--Announcement--><img src=http://old.example/discus/messages/1/p.jpg "
             "alt=p><!--/Announcement-->\n"),
            "<!--Top: 9--><a href=/9.html?1>x</a><!--/Top-->\n",
            "<!--Top: 9--><a href=http://old.example/discus/messages/1/?1>x</a><!--/Top-->\n",
        };
        // A loop takes a run through a thousand pages, so there are few.
        if (Chance(4)) return TopTo(1);
        return OneOf(kSections);
    }

    // A post with so many of the things that end a run.
    std::string PostOfFatals(int fatals) {
        std::vector<const char*> bodies = {
            "<font size=2><font color=red>x</font> ",
            "<!--attachment: x--><a href=\"file-a.pdf\" target=_blank>a</a><!--/attachment--> ",
            "<img src=http://old.example/discus/messages/1/p-1.jpg alt=p> ",
            "<a href=\"page\">see /discus/messages/1</a> ",
            "<a href=\"/secure\"></a> <a href=\"x\">/secure/</a> ",
        };
        std::shuffle(bodies.begin(), bodies.end(), random_);
        const bool isTimed = Chance(50);
        if (!isTimed) --fatals;
        std::string body = "Hello, <b>all</b>. ";
        for (int fatal = 0; fatal < fatals; ++fatal) body += bodies[static_cast<std::size_t>(fatal)];
        return Post(++posts_, "Anna", isTimed ? "1043846797" : "never", body);
    }

    // Five pages below one top, and some more tops. `fatals` things that end a run stand in it.
    void Make(CheckedBoard& board, int fatals) {
        constexpr int kPages = 5;
        std::vector<std::string> pages(kPages + 1);
        std::string members;
        for (int member = Number(4); member > 0; --member) members += SoundMember(member);
        for (int page = 1; page <= kPages; ++page) {
            std::string& text = pages[static_cast<std::size_t>(page)];
            text = HeadOf(page);
            if (page < kPages && Chance(80)) text += TopTo(page + 1);
            if (page == 1) text += Fatals(fatals, members);
            for (int section = Number(4); section > 0; --section) text += SoundSection();
        }
        board.WriteBoardFile(testing::BoardFile(Chance(10) ? "A, \"b\"" : "Main", {1, 77}));
        if (!members.empty()) board.WriteMembers(members);
        for (int page = 1; page <= kPages; ++page) {
            const std::string name = "1/" + std::to_string(page) + ".html";
            if (page == 1 || Chance(90)) board.WritePage(name, pages[static_cast<std::size_t>(page)]);
        }
        if (Chance(50)) board.WritePage("1/file-a.pdf", "file");
        board.state.optCreateAttachments = true;
        board.state.optCreateRedirectionFiles = true;
        board.state.optFindDiscusSpecialCharacters = Chance(70);
    }

    // Anything at all, of the pieces that the rules look for.
    std::string Junk() {
        static constexpr const char* kPieces[] = {
            "<!--Category: ",
            "<!--/Category-->",
            "<!--Text-->",
            "<!--/Text-->",
            "<!--Top: 1-->",
            "<!--/Top-->",
            "<!-- Topic Hidden -->",
            "<!--Topic: 1/a-->",
            "<!--Me: 1/b`c\\d-->",
            "<!--Me: ",
            "-->",
            "<!--Announcement-->",
            "<!--/Announcement-->",
            "<!--Post: 1-->",
            "<!--/Post: 1-->",
            "<!--Post: ",
            "<!--name-->",
            "<!--/name-->",
            "<!--Time: 5-->",
            "<!--Time: ",
            "<!--attachment:",
            "<!--/attachment-->",
            "<a href=",
            "<a href=http://old.example/discus/messages/1/4.html?",
            "</a>",
            ".html?",
            "<title>",
            "</title>",
            "href=\"",
            "\" target=",
            "<img src=",
            "<img src=\"/discus/messages/",
            " alt=",
            "<font ",
            "<font size=",
            "</font>",
            "/discus/messages/",
            "/secure/",
            "show.cgi",
            "x",
            ">",
            "<",
            "\"",
            "\r\n",
            "/",
            "&auml;",
            "&#8217;",
            "?",
            " ",
            "^",
            "5",
        };
        std::string text;
        for (int piece = Number(60); piece > 0; --piece) text += OneOf(kPieces);
        return text;
    }

    void MakeOfJunk(CheckedBoard& board) {
        board.WriteBoardFile(testing::BoardFile("Main", {1, 2}) + (Chance(30) ? Junk() : ""));
        if (Chance(30)) board.WriteMembers("a:b:c:d:e:f:1:1.1.1.1:2:g\n" + Junk());
        for (int page = 1; page <= 4; ++page) {
            const std::string folder = page < 3 ? std::to_string(page) : "1";
            board.WritePage(
                folder + "/" + std::to_string(page) + ".html",
                (Chance(70) ? HeadOf(page) : "") + Junk() + (Chance(30) ? SoundPost() : "") + Junk());
        }
        if (Chance(30)) board.WriteSecurePage("1/2.html", Junk());
    }

  private:
    // Those of members go to the members.
    std::string Fatals(int count, std::string& members) {
        std::string sections;
        for (; count > 0; --count) {
            const int place = Number(10);
            if (place < 2) {
                members += FatalMember();
            } else if (place < 4) {
                sections += FatalSection();
            } else {
                sections += FatalPost();
            }
        }
        return sections;
    }

    std::string HeadOf(int page) {
        const std::string number = std::to_string(page);
        const std::string name = Chance(20) ? "Same" : "Page " + number;
        if (page > 1 && Chance(10)) return "<!--Me: " + number + "/" + name + "-->\n";
        return PageHead("1/Top", number + "/" + name, "Title, " + number, "Subject");
    }

    static std::string TopTo(int page) {
        return Top(page, "http://old.example/discus/messages/1/" + std::to_string(page) + ".html", "below");
    }

    std::string SoundSection() {
        if (Chance(15)) return "<!--Announcement-->" + SoundBody() + "<!--/Announcement-->\n";
        if (Chance(5)) return "<!--Post: 8888--><!--Time: 5--> never closed\n";
        return SoundPost();
    }

    std::mt19937 random_;
    int posts_ = 0;
};

// The run agrees with the check: it comes to its end when nothing was found that ends it, else its first
// message is that of the finding that comes first.
void ExpectTruth(CheckedBoard& board, const BoardCheck& check, unsigned seed) {
    board.Convert();
    ASSERT_FALSE(board.messages.empty()) << "seed " << seed;
    if (testing::EndsOf(check) == 0) {
        EXPECT_FALSE(check.FirstEnd().has_value()) << "seed " << seed;
        EXPECT_FALSE(board.state.Progress.WasCancelled) << "seed " << seed;
        EXPECT_EQ(board.messages.size(), 1u) << "seed " << seed;
        return;
    }
    ASSERT_TRUE(check.FirstEnd().has_value()) << "seed " << seed;
    EXPECT_EQ(platform::ToUtf8(board.messages.front()),
              platform::ToUtf8(testing::MessageOf(*check.FirstEnd())))
        << "seed " << seed;
    EXPECT_TRUE(board.state.Progress.WasCancelled) << "seed " << seed;
}

TEST(Truth, ABoardInWhichNothingEndsARunConvertsToItsEnd) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        CheckedBoard board;
        BoardMaker(seed).Make(board, 0);
        const BoardCheck& check = board.Check();
        ASSERT_EQ(testing::EndsOf(check), 0) << "seed " << seed;
        ExpectTruth(board, check, seed);
    }
}

TEST(Truth, WhatAloneEndsARunEndsItWithTheMessageOfItsFinding) {
    for (unsigned seed = 1000; seed < 1150; ++seed) {
        CheckedBoard board;
        BoardMaker(seed).Make(board, 1);
        const BoardCheck& check = board.Check();
        ASSERT_EQ(testing::EndsOf(check), 1) << "seed " << seed;
        ExpectTruth(board, check, seed);
    }
}

TEST(Truth, OfSeveralThingsThatEndARunTheFirstDoes) {
    for (unsigned seed = 2000; seed < 2040; ++seed) {
        CheckedBoard board;
        BoardMaker(seed).Make(board, 3);
        const BoardCheck& check = board.Check();
        ASSERT_EQ(testing::EndsOf(check), 3) << "seed " << seed;
        ExpectTruth(board, check, seed);
    }
}

TEST(Truth, OfSeveralThingsInOnePostThatEndARunEachIsFound) {
    for (unsigned seed = 2500; seed < 2540; ++seed) {
        CheckedBoard board;
        BoardMaker maker(seed);
        const int fatals = 1 + maker.Number(5);
        board.WriteBoardFile(testing::BoardFile("Main", {1}));
        board.WritePage("1/1.html", PageHead("1/Top", "1/Page", "Title", "Subject") + maker.SoundPost() +
                                        maker.PostOfFatals(fatals) + maker.SoundPost());
        const BoardCheck& check = board.Check();
        ASSERT_EQ(testing::EndsOf(check), fatals) << "seed " << seed;
        ExpectTruth(board, check, seed);
    }
}

TEST(Truth, HoldsForBoardsOfAnyPiecesInAnyOrder) {
    int ended = 0;
    constexpr unsigned kBoards = 120;
    for (unsigned seed = 3000; seed < 3000 + kBoards; ++seed) {
        CheckedBoard board;
        BoardMaker(seed).MakeOfJunk(board);
        const BoardCheck& check = board.Check();
        if (testing::EndsOf(check) > 0) ++ended;
        ExpectTruth(board, check, seed);
    }
    // Both outcomes were met often enough to tell something.
    EXPECT_GT(ended, 12);
    EXPECT_LT(ended, 108);
}

}  // namespace
}  // namespace tessaly

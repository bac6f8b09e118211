#include "translate/modImages.h"

#include "tests/translate/TranslateTest.h"

namespace tessaly {
namespace {

class ProcessImagesTest : public ::testing::Test {
  protected:
    std::u16string Process(std::u16string_view text) { return ProcessImages(state, text); }

    void ExpectFailure(std::u16string_view text) {
        try {
            Process(text);
            FAIL() << "no failure";
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number, kInvalidCall);
        }
    }

    ConversionState state;
};

TEST_F(ProcessImagesTest, ALocalImageBecomesABBCodeImageWithItsOldAddress) {
    EXPECT_EQ(Process(u"a <img src=\"http://old.example/discus/messages/3/p.jpg\" alt=\"P\" border=0> b"),
              u"a [img]http://old.example/discus/messages/3/p.jpg[/img] b");
}

TEST_F(ProcessImagesTest, AnImageBelowSecureIsALocalOne) {
    EXPECT_EQ(Process(u"<IMG SRC=\"/SECURE/3/p.jpg\" ALT=\"\">"), u"[img]/SECURE/3/p.jpg[/img]");
}

TEST_F(ProcessImagesTest, ATextWithoutImagesStays) {
    EXPECT_EQ(Process(u"a <img  src=\"/secure/p.jpg\" alt=\"\"> b"),
              u"a <img  src=\"/secure/p.jpg\" alt=\"\"> b");
    EXPECT_EQ(Process(u""), u"");
}

TEST_F(ProcessImagesTest, AnImageOfAnotherSiteStays) {
    const std::u16string text = u"<img src=\"http://elsewhere.example/p.jpg\" alt=\"P\">";
    EXPECT_EQ(Process(text), text);
}

TEST_F(ProcessImagesTest, AnImageWithoutAnAltStays) {
    const std::u16string text = u"<img src=\"http://old.example/discus/messages/3/p.jpg\">";
    EXPECT_EQ(Process(text), text);
}

TEST_F(ProcessImagesTest, OnlyTheFirstImageIsLookedAt) {
    const std::u16string text =
        u"<img src=\"http://elsewhere.example/p.jpg\" alt=\"P\">"
        u"<img src=\"http://old.example/discus/messages/3/p.jpg\" alt=\"P\">";
    EXPECT_EQ(Process(text), text);
}

TEST_F(ProcessImagesTest, ASecondLocalImageStays) {
    EXPECT_EQ(
        Process(u"<img src=\"/discus/messages/3/p.jpg\" alt=\"P\"><img src=\"/discus/messages/3/q.jpg\" "
                u"alt=\"Q\">"),
        u"[img]/discus/messages/3/p.jpg[/img]<img src=\"/discus/messages/3/q.jpg\" alt=\"Q\">");
}

TEST_F(ProcessImagesTest, TheSourceRunsOnToALaterAltAndOnlyTheImagesOwnTagIsReplaced) {
    EXPECT_EQ(Process(u"a <img src=\"/discus/messages/3/p.jpg\"> b <input alt=\"Q\"> c"),
              u"a [img]/discus/messages/3/p.jpg[/img] b <input alt=\"Q\"> c");
}

// The first image lies elsewhere, but its source runs on over the second, local one.
TEST_F(ProcessImagesTest, ARunOnSourceMakesAForeignImageALocalOne) {
    EXPECT_EQ(
        Process(
            u"<img src=\"http://elsewhere.example/p.jpg\"><img src=\"/discus/messages/3/q.jpg\" alt=\"Q\">"),
        u"[img]http://elsewhere.example/p.jpg[/img]<img src=\"/discus/messages/3/q.jpg\" alt=\"Q\">");
}

TEST_F(ProcessImagesTest, AnUnquotedSourceIsAFailure) {
    ExpectFailure(u"<img src=/discus/messages/3/p.jpg alt=P>");
}

TEST_F(ProcessImagesTest, AnUnquotedSourceThatRunsOnToAQuoteKeepsTheBeginningOfItsTag) {
    EXPECT_EQ(Process(u"<img src=/discus/messages/3/p.jpg> \"b\" <input alt=Q>"),
              u"[img]<img src=/discus/messages/3/p.jpg> [/img] \"b\" <input alt=Q>");
}

TEST_F(ProcessImagesTest, TheArgumentStaysAsItWas) {
    const std::u16string text = u"<img src=\"/secure/3/p.jpg\" alt=\"P\">";
    Process(text);
    EXPECT_EQ(text, u"<img src=\"/secure/3/p.jpg\" alt=\"P\">");
}

}  // namespace
}  // namespace tessaly

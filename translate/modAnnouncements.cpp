#include "translate/modAnnouncements.h"

#include "control/RoutineHandler.h"
#include "output/OutputFiles.h"
#include "reader/FieldEscaping.h"
#include "reader/TagScanning.h"
#include "text/numbers.h"
#include "translate/DiscusProcessLinks.h"
#include "translate/clsTblAnnouncements.h"
#include "translate/modImages.h"

namespace tessaly {

namespace {

constexpr std::u16string_view kLabel = u" - mybbWriteAnnouncementMsg()";

// The post in hand is that of the page before.
void NoteFilesWithoutPost(ConversionState& state, std::size_t from) {
    for (std::size_t at = from; at < state.Note.Attachments.size(); ++at) state.Note.Attachments[at].pid = 0;
}

}  // namespace

void mybbWriteAnnouncementMsg(ConversionState& state, std::u16string_view section, std::int32_t forumId,
                              std::int32_t poster, std::u16string_view subject) try {
    std::u16string body(section);
    const std::size_t filesBefore = state.Note.Attachments.size();
    std::u16string text = DiscusProcessLinks(state, body, state.PageSerial, state.AnnouncementForumId);
    NoteFilesWithoutPost(state, filesBefore);
    text = TranslateImages(state, kLabel, std::move(text));
    text = RemoveTagInformation(state, text);
    text = EscapeField(text);
    state.AnnouncementCounter = Add(state.AnnouncementCounter, 1);
    clsTblAnnouncements row;
    row.aid = state.AnnouncementCounter;
    row.fid = forumId;
    row.uid = poster;
    row.subject = subject;
    row.message = std::move(text);
    row.allowhtml = 1;
    row.allowmycode = 1;
    row.allowsmilies = 1;
    std::u16string line;
    row.BuildString(line);
    WriteFileLine(state, line, state.AnnouncementsFile, u"mybb_announcements", false);
} catch (...) {
    RoutineHandler(state, kLabel, CurrentError());
}

}  // namespace tessaly

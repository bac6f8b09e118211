#include "cli/report.h"

#include <nlohmann/json.hpp>

#include "platform/charset.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace tessaly {

namespace {

using Json = nlohmann::ordered_json;

Json Texts(const std::vector<std::u16string>& texts) {
    Json list = Json::array();
    for (const std::u16string& text : texts) list.push_back(platform::ToUtf8(text));
    return list;
}

}  // namespace

void WriteReport(const ConversionState& state, const std::vector<std::u16string>& messages,
                 const std::optional<std::u16string>& untrapped, const std::string& file) {
    Json report;
    report["cancelled"] = state.Progress.WasCancelled;
    report["messages"] = Texts(messages);
    report["processedFolders"] = Texts(state.cboProcessedFolders.Items);
    report["messageCount"] = platform::ToUtf8(state.txtMsgCount.Text);
    report["area"] = platform::ToUtf8(state.txtArea.Text);
    report["counters"]["forums"] = state.ForumCounter;
    report["counters"]["threads"] = state.ThreadCounter;
    report["counters"]["posts"] = state.PostCounter;
    report["counters"]["attachments"] = state.AttachmentCounter;
    report["counters"]["announcements"] = state.AnnouncementCounter;
    report["untrapped"] = untrapped ? Json(platform::ToUtf8(*untrapped)) : Json(nullptr);
    const std::u16string path = platform::AbsolutePathText(platform::ToNative(platform::FromUtf8(file)));
    platform::WriteWholeFile(path, {report.dump(1) + "\n"});
}

}  // namespace tessaly

#include "control/ToolboxLibrary.h"

#include <algorithm>

#include "platform/IniFile.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "text/numbers.h"

namespace tessaly {

namespace {

void Call(const std::function<void()>& hook) {
    if (hook) hook();
}

std::u16string TwoDigits(std::int64_t number) {
    return (number < 10 ? u"0" : u"") + ToText(number);
}

}  // namespace

std::u16string ToolboxLibrary::StartTimer() {
    started_ = platform::Now();
    return platform::MomentText(started_);
}

std::u16string ToolboxLibrary::StopTimer() {
    stopped_ = platform::Now();
    return platform::MomentText(stopped_);
}

std::u16string ToolboxLibrary::ElapsedTime(std::u16string_view start, std::u16string_view) const {
    if (start.empty()) return {};
    const std::int64_t seconds = std::max<std::int64_t>(0, stopped_ - started_);
    return ToText(seconds / 3600) + u":" + TwoDigits(seconds / 60 % 60) + u":" + TwoDigits(seconds % 60);
}

std::u16string ToolboxLibrary::AddBackslash(std::u16string_view path) {
    std::u16string folder(path);
    if (!folder.ends_with(u'\\')) folder += u'\\';
    return folder;
}

bool ToolboxLibrary::WriteIniValue(std::u16string_view section, std::u16string_view key,
                                   std::u16string_view value, std::u16string_view iniFile) {
    platform::WriteIni(iniFile, section, key, value);
    return true;
}

std::u16string ToolboxLibrary::ReadIniValue(std::u16string_view section, std::u16string_view key,
                                            std::u16string_view missing, std::u16string_view iniFile) const {
    return platform::ReadIni(iniFile, section, key).value_or(std::u16string(missing));
}

bool ToolboxLibrary::FileExists(std::u16string_view path) {
    return platform::FileExists(path);
}

bool ToolboxLibrary::FileExistsWithin(std::u16string_view path, const std::vector<std::u16string>& folders) {
    return platform::FileExistsWithin(path, folders);
}

void ToolboxLibrary::RecordErrorText(std::u16string_view text) {
    RecordedErrors.emplace_back(text);
}

void ToolboxLibrary::PrepareForm() const {
    Call(FormPrepared);
}

void ToolboxLibrary::FormWaitBegin() const {
    Call(WaitBegun);
}

void ToolboxLibrary::FormWaitEnd() const {
    Call(WaitEnded);
}

std::u16string ToolboxLibrary::MakeFolderPath(std::u16string_view path) {
    platform::MakeFolders(path);
    return std::u16string(path);
}

std::u16string ToolboxLibrary::BrowseForFolder(std::u16string_view startFolder) const {
    return PickFolder ? PickFolder(startFolder) : std::u16string();
}

void ToolboxLibrary::LookAtClock() {
    constexpr int kCallsBetween = 16;
    callsToCount_ = EventInterval == 0 ? 0 : kCallsBetween;
    const long long now = platform::SteadyMilliseconds();
    if (now - lastEvents_ < EventInterval) return;
    Call(HandleEvents);
    lastEvents_ = platform::SteadyMilliseconds();
}

}  // namespace tessaly

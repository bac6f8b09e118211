#pragma once

#include <ctime>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// The services that the conversion calls for what is no conversion logic. An operation that fails raises a
// run-time error in its caller.
class ToolboxLibrary {
  public:
    // Marks the start or the end of the run's timing; gives the moment as text.
    std::u16string StartTimer();
    std::u16string StopTimer();

    // The time between the two marks, as 0:01:23; empty when the start text is empty.
    std::u16string ElapsedTime(std::u16string_view start, std::u16string_view stop) const;

    // The path with a "\" at its end.
    static std::u16string AddBackslash(std::u16string_view path);

    // Writes one key, replacing an old value and keeping all else that the file holds. Raises 75 when the
    // file cannot be written.
    bool WriteIniValue(std::u16string_view section, std::u16string_view key, std::u16string_view value,
                       std::u16string_view iniFile);

    // The stored value; `missing` when the file, the section or the key is not there.
    std::u16string ReadIniValue(std::u16string_view section, std::u16string_view key,
                                std::u16string_view missing, std::u16string_view iniFile) const;

    static bool FileExists(std::u16string_view path);

    // The same for a path that was put together from what a page says: false as well for a file outside of
    // `folders`, wherever links and ".." lead.
    static bool FileExistsWithin(std::u16string_view path, const std::vector<std::u16string>& folders);

    // Receives the text of every trapped failure.
    void RecordErrorText(std::u16string_view text);

    // What forms do as their load ends, as Cancel is clicked and as a run ends.
    void PrepareForm() const;
    void FormWaitBegin() const;
    void FormWaitEnd() const;

    static std::u16string MakeFolderPath(std::u16string_view path);

    // The folder that the operator picks; empty when he backs out or there is no one to ask.
    std::u16string BrowseForFolder(std::u16string_view startFolder) const;

    // Lets the interface handle what is pending. It stands in the tightest loops: most calls only count.
    void KeepResponsive() {
        if (--callsToCount_ > 0) return;
        LookAtClock();
    }

    // What whoever shows the run hooks in. HandleEvents is called by KeepResponsive, at most once in
    // EventInterval milliseconds; with an interval of 0 at each call.
    std::function<void()> HandleEvents;
    std::function<std::u16string(std::u16string_view)> PickFolder;
    std::function<void()> FormPrepared;
    std::function<void()> WaitBegun;
    std::function<void()> WaitEnded;
    int EventInterval = 20;

    // The texts of all trapped failures, oldest first.
    std::vector<std::u16string> RecordedErrors;

  private:
    void LookAtClock();

    std::time_t started_ = 0;
    std::time_t stopped_ = 0;
    int callsToCount_ = 0;
    long long lastEvents_ = 0;
};

}  // namespace tessaly

#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "control/FormFields.h"
#include "control/RunNote.h"
#include "control/ToolboxLibrary.h"
#include "text/KeyedCollection.h"
#include "text/search.h"

namespace tessaly {

namespace platform {
class TextStream;
class TextFile;
}  // namespace platform

struct clsMember;
struct clsGroup;
struct CheckListener;

// One family of numbered output files.
struct OutputFile {
    std::u16string Template;  // full path with "XXX" in the place of the number
    std::u16string Name;      // full path of the file now being filled
    std::shared_ptr<platform::TextStream> Stream;
    std::int32_t Number = 0;
    std::int32_t Size = 0;  // characters gone to the stream so far, 2 a line for its end
};

// One element a depth of the topic tree: what is known of the page in hand there.
struct DataIndexElement {
    std::u16string PageData;
    std::u16string PagePath;
    std::u16string SecurePagePath;
    std::u16string PageName;
    std::u16string TopicNumber;
    std::u16string FileNumber;
    std::u16string PostSection;
    std::u16string AnnouncementSection;
    std::u16string TopSection;
    std::u16string TopicName;
    std::u16string MeName;
    std::u16string ParentList;
    std::u16string SubPagePath;
    std::u16string PageTitle;
    std::u16string PageSubject;

    Position TopPos = 0;
    Position TopNext = 0;
    Position AnnouncementPos = 0;
    Position AnnouncementNext = 0;
    Position PostPos = 0;
    Position PostNext = 0;
    Position SparePos = 0;
    Position SpareNext = 0;
    std::int32_t PageLoopCount = 0;
    std::int32_t SectionFlags = 0;
    std::int32_t FirstPostId = 0;
    std::int32_t LastPostId = 0;
    std::int32_t FirstPosterId = 0;
    std::int32_t LastPosterId = 0;
    std::int32_t ParentForumId = 0;
    std::int32_t ThreadBase = 0;
};

// What a progress line or bar shows beside the described fields. Nothing reads it back.
struct RunProgress {
    std::int64_t PagesRead = 0;
    std::int64_t RowsWritten = 0;
    bool WasCancelled = false;  // `CancelRequested` as it was when the summary was made
    bool SummaryShown = false;
    std::vector<std::u16string> TroubledFiles;  // that could not be read or written, in order of trouble
};

// The one set of run-wide variables, read and written by name by every routine.
struct ConversionState {
    ConversionState();
    ~ConversionState();
    ConversionState(const ConversionState&) = delete;
    ConversionState& operator=(const ConversionState&) = delete;

    // Options
    bool optCreateRedirectionFiles = false;
    bool optFindDiscusSpecialCharacters = false;
    bool optCreateAttachments = false;
    bool optCreateHiddenTopics = false;
    bool optDisplay = false;
    bool optLog = false;

    // Fields of the form held as text or number
    std::u16string DiscusRootFolder;
    std::u16string DiscusMessageFolder;
    std::u16string DiscusSecureMessageFolder;
    std::u16string DiscusMainFolder;
    std::u16string DiscusWebsite;
    std::u16string mybbForumAddr;
    std::u16string mybbOutputFolder;
    std::u16string mybbAttachmentsFolder;
    std::u16string mybbRedirectFolder;
    std::u16string Charset;
    std::u16string DefaultAdmin;
    std::int32_t DefaultGroupCount = 7;
    std::int32_t DefaultUserCount = 0;
    std::int32_t SplitMBSize = 0;

    // Names of files, full paths
    std::u16string BoardTopicsFile;
    std::u16string DiscusCgiFile;
    std::u16string TreeFile;
    std::u16string UserFile;
    std::u16string UsersFile;
    std::u16string LogFileName;
    std::u16string LogErrorFileName;
    std::u16string IniFile;

    // Run control
    bool CancelRequested = false;
    std::u16string RedirectTemplate;

    // Counters
    std::int32_t ForumCounter = 0;
    std::int32_t ForumOrder = 0;
    std::int32_t ThreadCounter = 0;
    std::int32_t ThreadRowCount = 0;
    std::int32_t PostCounter = 0;
    std::int32_t AttachmentCounter = 0;
    std::int32_t AnnouncementCounter = 0;
    std::int32_t PageSerial = 0;
    std::int32_t Depth = 0;
    std::int32_t PreviousDepth = 0;
    std::int32_t BoardSpare = 0;
    std::int32_t BoardSpare2 = 0;

    // The page in hand
    bool HiddenTopic = false;
    std::int32_t CurrentPosterId = 0;
    std::int32_t FirstPostTime = 0;
    std::int32_t LastPostTime = 0;
    std::int32_t ThreadPostCount = 0;
    bool ReplaceableCharactersLoaded = false;
    std::int32_t AnnouncementForumId = 0;

    // Output
    OutputFile ThreadsFile;
    OutputFile UnknownFile;
    OutputFile PostsFile;
    OutputFile UsersImportFile;
    OutputFile ForumsFile;
    OutputFile AttachmentsFile;
    OutputFile UserGroupsFile;
    OutputFile InternalLinksFile;
    OutputFile InternalLinksUpdateFile;
    OutputFile AnnouncementsFile;
    struct {
        std::shared_ptr<platform::TextFile> Stream;
    } LogFile;
    // The error log is open only while a line is written; being set tells that it may be.
    struct {
        bool Stream = false;
    } LogErrorFile;

    // Private to DisplayInfo
    std::size_t LastAreaLength = 0;
    std::int32_t LogLineCount = 0;

    // Collections of a run
    KeyedCollection<std::shared_ptr<clsMember>> MembersById;
    KeyedCollection<std::shared_ptr<clsMember>> MembersByRealName;
    KeyedCollection<std::shared_ptr<clsMember>> MembersByUserName;
    KeyedCollection<std::u16string> RealNames;
    KeyedCollection<std::shared_ptr<clsGroup>> GroupsByName;
    KeyedCollection<std::u16string> ThreadIdsByFile;
    KeyedCollection<std::u16string> ReplaceableCharacters;
    KeyedCollection<std::u16string> SpareCollectionA;
    KeyedCollection<std::u16string> SpareCollectionB;
    KeyedCollection<std::int32_t> ForumIdsByName;
    std::vector<std::int32_t> MemberPostCounts;

    // Collections of a page
    KeyedCollection<std::u16string> PageRows;
    KeyedCollection<std::u16string> PageAttachmentRows;

    // Element 0 is there from the start; a deque, so that an element stays where it is while others come and
    // go.
    std::deque<DataIndexElement> DataIndex;

    ToolboxLibrary ToolboxA;

    // Form fields
    TextField txtDiscusRootFolder;
    TextField txtDiscusMessageFolder;
    TextField txtDiscusSecureMessageFolder;
    TextField txtDiscusMainFolder;
    TextField txtmybbOutputFolder;
    TextField txtmybbAttachmentsFolder;
    TextField txtDiscusWebsite;
    TextField txtmybbForumAddr;
    TextField txtDefaultAdmin;
    TextField txtDefaultUsers;
    TextField txtDefaultGroups;
    TextField txtSplitMBSize;
    TextField cboCharset;
    CheckField chkShowProgress;
    CheckField chkLogProgress;
    CheckField chkCreateAttachments;
    CheckField chkCreateHiddenTopics;
    CheckField chkCreateRedirectionFiles;
    CheckField chkFindDiscusSpecialCharacters;
    AreaField txtArea;
    TextField txtMsgCount;
    ListField cboProcessedFolders;
    ButtonField cmdConvert;
    ButtonField cmdCancel;
    TextField Caption;

    // The folder and the file name of the running program; whoever starts the program sets them.
    std::u16string ProgramFolder;
    std::u16string ProgramName;
    // Another settings file than the one beside the program; empty for that one.
    std::u16string SettingsFile;

    // How a message box is shown, and how a field takes the focus back.
    std::function<void(std::u16string_view)> ShowMessage = [](std::u16string_view) {};
    std::function<void(TextField&)> SetFocus = [](TextField&) {};

    RunProgress Progress;
    RunNote Note;

    // Who listens while the board is checked; none while it is converted.
    CheckListener* Check = nullptr;
};

// The element of the page in hand, by `Depth` as it stands. Raises 9 when there is none.
DataIndexElement& CurrentIndex(ConversionState& state);

// The folders of the source that the operator named, as they stand; those of the pages first.
std::vector<std::u16string> SourceFolders(const ConversionState& state);

// The charset names on offer, in the order of the list.
const std::vector<std::u16string>& CharsetNames();

}  // namespace tessaly

#include "control/modDefinitions.h"

#include "text/RunTimeError.h"

namespace tessaly {

ConversionState::ConversionState() : DataIndex(1) {
    txtDiscusRootFolder.Text = u"C:\\Discusware";
    txtDiscusMessageFolder.Text = u"C:\\Discusware\\discus\\messages";
    txtDiscusSecureMessageFolder.Text = u"C:\\Discusware\\discus_admin_nnnnnnnnnn\\secure";
    txtDiscusMainFolder.Text = u"C:\\Discusware\\discus_admin_nnnnnnnnnn";
    txtmybbOutputFolder.Text = u"C:\\Discusware\\phpBB3\\Output\\";
    txtmybbAttachmentsFolder.Text = u"C:\\Discusware\\phpBB3\\Output\\attachments";
    txtDefaultGroups.Text = u"8";
    txtMsgCount.Text = u"0";
    txtSplitMBSize.Text = u"50";
    chkCreateAttachments.Value = 1;
    chkCreateHiddenTopics.Value = 1;
    chkCreateRedirectionFiles.Value = 1;
    chkFindDiscusSpecialCharacters.Value = 1;
    cmdCancel.Enabled = false;
    Caption.Text = u"Tessaly";
}

ConversionState::~ConversionState() = default;

DataIndexElement& CurrentIndex(ConversionState& state) {
    if (state.Depth < 0) Raise(kSubscriptOutOfRange);
    const auto depth = static_cast<std::size_t>(state.Depth);
    if (depth >= state.DataIndex.size()) Raise(kSubscriptOutOfRange);
    return state.DataIndex[depth];
}

std::vector<std::u16string> SourceFolders(const ConversionState& state) {
    return {state.DiscusMessageFolder, state.DiscusSecureMessageFolder, state.DiscusMainFolder,
            state.DiscusRootFolder};
}

const std::vector<std::u16string>& CharsetNames() {
    static const std::vector<std::u16string> names = {
        u"",           u"big5",        u"euc-jp",      u"euc-kr",
        u"gb2312",     u"iso-2022-jp", u"iso-2022-kr", u"iso-8859-1",
        u"iso-8859-2", u"iso-8859-3",  u"iso-8859-4",  u"iso-8859-5",
        u"iso-8859-6", u"iso-8859-7",  u"iso-8859-8",  u"iso-8859-9",
        u"koi8-r",     u"shift-jis",   u"us-ascii",    u"utf-7",
        u"utf-8"};
    return names;
}

}  // namespace tessaly

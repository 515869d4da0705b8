#include "notes/attachment_kind.h"

#include <gtest/gtest.h>
#include <map>

#include "notes/note.h"

namespace lore {
namespace {

TEST(AttachmentKind, FollowsTheExtensionWithoutRegardToCase) {
    const std::map<int32_t, std::vector<const char*>> kinds = {
        {1, {"C:\\a.b\\lamp.Jpg"}},
        {2, {"/x/readme.txt"}},
        {3, {"Notes.DOCX"}},
        {4, {"a.pdf"}},
        {5, {"a.csv", "a.mod"}},
        {6, {"a.asx"}},
        {7, {"a.flac"}},
        {8, {"a.xml"}},
        {9, {"a.c"}},
        {11, {"a.zip"}},
        {10, {"a.c.", "noextension", "C:\\dir.pdf\\file", "a.doc,docm", "a.ocx", ""}}};
    for (const auto& [kind, paths] : kinds)
        for (const char* const path : paths)
            EXPECT_EQ(AttachmentKindOf(path), kind) << path;
}

TEST(AttachmentKind, OnlyAPictureStaysShown) {
    for (const int32_t kind : {1, 2}) {
        CAttachment attachment{0, 1.0, "", "", "", 1, true};
        SetAttachmentType(attachment, kind);
        EXPECT_TRUE(attachment.type == kind && attachment.show == (kind == 1));
    }
}

TEST(AttachmentKind, NamesEveryKind) {
    EXPECT_EQ(AttachmentKindName(1), "Image File");
    EXPECT_EQ(AttachmentKindName(7), "Video File");
    EXPECT_EQ(AttachmentKindName(11), "Compressed File");
    EXPECT_EQ(AttachmentKindName(12), "Web Link");
    for (const int32_t kind : {0, 13, -5})
        EXPECT_EQ(AttachmentKindName(kind), "Unknown File");
}

}  // namespace
}  // namespace lore

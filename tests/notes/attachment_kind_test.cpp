#include "notes/attachment_kind.h"

#include <gtest/gtest.h>

#include "notes/note.h"

namespace lore {
namespace {

TEST(AttachmentKind, FollowsTheExtensionWithoutRegardToCase) {
    for (const auto& [path, kind] : {std::pair{"Notes.DOCX", 3},
                                     {"C:\\a.b\\lamp.Jpg", 1},
                                     {"/x/readme.txt", 2},
                                     {"a.pdf", 4},
                                     {"a.csv", 5},
                                     {"a.asx", 6},
                                     {"a.flac", 7},
                                     {"a.xml", 8},
                                     {"a.c", 9},
                                     {"a.zip", 11},
                                     {"a.mod", 5},
                                     {"a.c.", 10},
                                     {"noextension", 10},
                                     {"C:\\dir.pdf\\file", 10},
                                     {"a.doc,docm", 10},
                                     {"a.ocx", 10},
                                     {"", 10}})
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

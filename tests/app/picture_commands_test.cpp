#include "app/picture_commands.h"

#include <gtest/gtest.h>
#include <limits>

#include "app/open_rules.h"

namespace lore {
namespace {

constexpr PictureRoom kRoom{400, 600};

TEST(PictureCommands, ZoomInStepsAndStopAtTheSmallest) {
    CAttachment picture;
    EXPECT_TRUE(ChangePicture(picture, PictureCommand::ZoomIn, kRoom));
    EXPECT_DOUBLE_EQ(picture.zoom, 1.05);
    for (int i = 0; i < 40; ++i)
        ChangePicture(picture, PictureCommand::ZoomOut, kRoom);
    EXPECT_DOUBLE_EQ(picture.zoom, 0.05);
    EXPECT_FALSE(ChangePicture(picture, PictureCommand::ZoomOut, kRoom));
}

TEST(PictureCommands, ShiftStaysWithinHalfTheFreeWidth) {
    CAttachment picture;
    for (int i = 0; i < 40; ++i)
        ChangePicture(picture, PictureCommand::ShiftRight, kRoom);
    EXPECT_EQ(picture.shift, 100);
    for (int i = 0; i < 80; ++i)
        ChangePicture(picture, PictureCommand::ShiftLeft, kRoom);
    EXPECT_EQ(picture.shift, -100);
    picture.zoom = 1.5;
    EXPECT_FALSE(ChangePicture(picture, PictureCommand::ShiftLeft, kRoom)) << "as wide as the card";
    EXPECT_TRUE(ChangePicture(picture, PictureCommand::Restore, kRoom));
    EXPECT_EQ(picture.shift, 0);
    EXPECT_EQ(picture.zoom, 1.0);
}

TEST(PictureCommands, TakeWhatADamagedFileHolds) {
    for (const double zoom : {std::numeric_limits<double>::quiet_NaN(), 1e300, -1e300}) {
        for (const int32_t shift : {INT32_MAX, INT32_MIN}) {
            CAttachment picture;
            picture.zoom = zoom;
            picture.shift = shift;
            ChangePicture(picture, PictureCommand::ShiftLeft, kRoom);
            ChangePicture(picture, PictureCommand::ZoomIn, kRoom);
            ChangePicture(picture, PictureCommand::Restore, kRoom);
            EXPECT_EQ(picture.zoom, 1.0);
        }
    }
    CAttachment far;
    far.shift = INT32_MAX;
    EXPECT_TRUE(ChangePicture(far, PictureCommand::ShiftRight, kRoom));
    EXPECT_EQ(far.shift, 100);
}

TEST(OpenRules, OpenOnlyWhatIsSafe) {
    using Case = std::pair<const char*, OpenVerdict>;
    const Case links[] = {{"https://example.org/x", OpenVerdict::Open},
                          {"MAILTO:a@example.org", OpenVerdict::Open},
                          {" ftp://example.org", OpenVerdict::Open},
                          {"file:///etc/passwd", OpenVerdict::Refuse},
                          {"javascript:alert(1)", OpenVerdict::Refuse},
                          {"example.org", OpenVerdict::Refuse},
                          {"", OpenVerdict::Refuse},
                          {"httpx://a", OpenVerdict::Refuse}};
    for (const auto& [link, expected] : links)
        EXPECT_EQ(JudgeLink(link), expected) << link;
    const Case files[] = {{"0000012.pdf", OpenVerdict::Open},     {"0000012.PNG", OpenVerdict::Open},
                          {"0000012.EXE", OpenVerdict::AskFirst}, {"a.b\\run.sh", OpenVerdict::AskFirst},
                          {"0000012", OpenVerdict::AskFirst},     {"x.desktop", OpenVerdict::AskFirst}};
    for (const auto& [file, expected] : files)
        EXPECT_EQ(JudgeFile(file), expected) << file;
}

}  // namespace
}  // namespace lore

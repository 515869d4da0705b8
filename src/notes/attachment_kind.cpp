#include "notes/attachment_kind.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/text.h"
#include "notes/note.h"

namespace lore {

namespace {

struct KindExtensions {
    int32_t kind;
    std::string_view extensions;  // each between two commas
};

// In the order of the tests: the first kind that lists an extension wins, so "asx" is music.
constexpr std::array<KindExtensions, 10> kKinds = {{
    {kImageFile, ",bmp,jpg,jpeg,gif,tif,tiff,dib,jfif,png,"},
    {kTextFile, ",txt,dos,"},
    {kDocumentFile,
     ",rtf,doc,docm,docx,dot,dotm,dotx,wps,awd,bfx,bk,bps,cpd,dob,dot,dtp,evy,its,jw,kos,lcn,ldw,mcw,msc,oas,wkb,wks,"
     "wp,wpa,wpd,wpw,"},
    {kPdfFile, ",pdf,"},
    {kSpreadsheetFile,
     ",xls,xlsx,xlsm,xlsb,xltx,xltm,csv,prn,dif,xla,xlam,slk,as,bwb,cal,col,fm,fm1,fm3,jzz,imp,lcw,lss,mod,ods,pln,pxl,"
     "qbw,ssf,sylk,vc,wk1,wk3,wk4,wke,"},
    {kHtmlFile, ",htm,html,mht,mhtml,xml,"},
    {kMusicFile, ",mp3,wma,wav,voc,au,aiff,ogg,mp2,asx,mid,midi,wmx,m3u,m4p,aif,cda,ra,smf,mpa,"},
    {kVideoFile, ",flac,aac,vlb,m4a,mp4,wm,wmv,asf,avi,mpeg,mpg,mpe,mpv2,flv,asx,divx,m2p,m2ts,mov,qt,rm,"},
    {kCodeFile, ",cpp,c,h,cs,cp,vb,"},
    {kCompressedFile,
     ",zip,rar,ace,ain,amg,ari,arx,cbr,cru,ezp,pif,lzx,sar,tar,tpz,uc2,ucn,zap,pak,lbr,moz,ish,put,spl,lif,"},
}};

constexpr std::array<std::string_view, 12> kNames = {
    "Image File", "Text File", "Document File", "Adobe PDF File", "Spreadsheet File", "Music File",
    "Video File", "HTML File", "Code File",     "Unknown File",   "Compressed File",  "Web Link"};

}  // namespace

int32_t AttachmentKindOf(std::string_view path) {
    const std::string extension = ToLower(FileExtension(path));
    if (extension.empty() || extension.find(',') != std::string::npos)
        return kUnknownFile;
    const std::string wanted = "," + extension + ",";
    const auto hit = std::find_if(kKinds.begin(), kKinds.end(), [&](const KindExtensions& entry) {
        return entry.extensions.find(wanted) != std::string_view::npos;
    });
    return hit == kKinds.end() ? kUnknownFile : hit->kind;
}

void SetAttachmentType(CAttachment& attachment, int32_t type) {
    attachment.type = type;
    if (type != kImageFile)
        attachment.show = false;
}

std::string_view AttachmentKindName(int32_t kind) {
    const bool known = kind >= kImageFile && kind <= kWebLink;
    return kNames[static_cast<size_t>(known ? kind : kUnknownFile) - 1];
}

}  // namespace lore

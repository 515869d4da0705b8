#include "platform/pdf_file.h"

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>

#include "base/file_io.h"
#include "platform/places.h"
#include "platform/run_program.h"

namespace lore {

namespace {

/// A folder that nobody else can look into, gone with this object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::error_code error;
        std::string pattern = (std::filesystem::temp_directory_path(error) / "lorebinder-XXXXXX").string();
        if (mkdtemp(pattern.data()))
            path_ = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code error;
        if (!path_.empty())
            std::filesystem::remove_all(path_, error);
    }
    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace

bool WritePdf(std::string_view html, const std::filesystem::path& file, FaultNotice& faults) {
    const TemporaryFolder folder;
    const std::filesystem::path page = folder.Path() / "page.html";
    const FileResult written = folder.Path().empty() ? FileResult{errno} : WriteFileAtomically(page, html);
    if (!written.Ok()) {
        faults.Tell({"The page for the PDF file could not be written", page.string(), written.Reason()});
        return false;
    }
    const std::filesystem::path program = ProgramFolder() / "lorebinder-pdf";
    std::error_code noFolder;  // a working folder that has been removed
    const std::filesystem::path absolute = std::filesystem::absolute(file, noFolder);
    const ProgramEnd end = RunProgram(program, {page.string(), (noFolder ? file : absolute).string()});
    if (end.error != 0)
        faults.Tell({"The program that makes PDF files could not be started", program.string(),
                     FileResult{end.error}.Reason()});
    else if (end.status != 0)
        faults.Tell({"The PDF file could not be made", file.string(),
                     program.string() + " ended with status " + std::to_string(end.status)});
    return end.Ok();
}

}  // namespace lore

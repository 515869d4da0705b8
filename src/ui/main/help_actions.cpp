#include "ui/main/help_actions.h"

#include <QDesktopServices>
#include <QUrl>

#include "app/help_commands.h"
#include "app/lorebinder_app.h"
#include "app/update_check.h"
#include "ui/controls/run_when_free.h"
#include "ui/look/qt_text.h"
#include "ui/main/about_dialog.h"

namespace lore {

namespace {

/// Lets an answer wait until no dialog is open, so that it doesn't come between the user and the keyboard.
class PatientSource : public UpdateSource {
public:
    PatientSource(UpdateSource& source, QObject& owner) : source_(source), owner_(owner) {}
    void Fetch(const std::string& address, std::function<void(const UpdateReply&)> done) override {
        source_.Fetch(address, [owner = &owner_, done](const UpdateReply& reply) {
            RunWhenFree(*owner, [done, reply] { done(reply); });
        });
    }

private:
    UpdateSource& source_;
    QObject& owner_;
};

}  // namespace

HelpActions::HelpActions(CLorebinderApp& app, const Theme& theme, QWidget& window)
    : QObject(&window), app_(app), theme_(theme), window_(window) {}

HelpActions::~HelpActions() = default;

HelpWorld HelpActions::World() const {
    return {app_.GetSettings(), app_.Ports().prompts,
            [](const std::filesystem::path& file) {
                return QDesktopServices::openUrl(QUrl::fromLocalFile(PathToQString(file)));
            },
            [](const std::string& address) { return QDesktopServices::openUrl(QUrl(ToQString(address))); }};
}

void HelpActions::SetUp(const std::filesystem::path& manual, UpdateSource* updates) {
    manual_ = manual;
    source_ = updates ? std::make_unique<PatientSource>(*updates, *this) : nullptr;
    const AppPorts& ports = app_.Ports();
    updates_ = std::make_unique<UpdateCheck>(
        UpdateWorld{app_.GetSettings(), app_.Store(), ports.prompts, ports.faults, ports.clock, source_.get(),
                    [this](const std::string& page) { OpenPage(page, "Check for program updates"); }});
}

void HelpActions::CheckForUpdates(bool daily) {
    if (!updates_)
        return;
    daily ? updates_->RunDaily() : updates_->Run();
}

void HelpActions::ShowManual() const {
    OpenManual(World(), manual_);
}

void HelpActions::ShowTutorial() const {
    OpenTutorial(World());
}

void HelpActions::ShowAbout() const {
    FWAboutBoxDlg(theme_, app_.Store(), &window_).exec();
}

void HelpActions::OpenPage(const std::string& address, const char* title) const {
    OpenHelpPage(World(), address, title);
}

}  // namespace lore

#pragma once
// Messages of the desktop host: the library's own message dialog.

#include "host/CoreDevServices.h"

#include <vector>

namespace fw::desktop {

/// ShowError, ShowInfo, ShowHelp and AskQuestion open the library's message
/// dialog with the critical, info, help and question sign. AskSaveFile asks
/// with the library's file chooser in save mode, starting in the folder last
/// saved to under the recent-file key (else the documents folder), and returns
/// the chosen location ("C:\home\anna\Bericht.txt"), "" when cancelled. AskText
/// asks with the library's input dialog. ChooseIcon asks with the resource
/// picker over icons ("*.ico;*.png"), opened at the current icon's folder with
/// that icon selected (without one, at the size's folder "Ico\<size>\"), and
/// returns the chosen resource path, "" when cancelled. RegisterForm and
/// UnregisterForm keep the list of open modeless forms.
class DesktopMessages final : public CoreDevMessages {
  public:
    void ShowError(const std::string& text, const std::string& title) override;
    std::string AskSaveFile(const std::string& defaultPattern, const std::string& title,
                            const std::string& filter, int filterIndex,
                            const std::string& defaultExtension, int flag,
                            const std::string& recentListKey) override;
    std::string AskText(const std::string& prompt, const std::string& title,
                        const std::string& defaultText) override;
    void ShowInfo(const std::string& text, const std::string& title) override;
    void ShowHelp(const std::string& text, const std::string& title) override;
    std::int32_t AskQuestion(const std::string& text, const std::string& title, std::int32_t style,
                             const std::string& icon, const std::string& messageKey) override;
    void RegisterForm(Form& form, const std::string& text) override;
    void UnregisterForm(Form& form, const std::string& text) override;
    std::string ChooseIcon(const std::string& current, const std::string& title, int size) override;

    /// The registered forms, oldest first.
    const std::vector<Form*>& OpenForms() const { return m_forms; }

  private:
    std::vector<Form*> m_forms;
};

} // namespace fw::desktop

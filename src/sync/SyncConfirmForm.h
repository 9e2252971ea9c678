#pragma once
// The confirmation of a synchronisation's plan: one row with a check box per
// planned action; OK takes the unchecked actions out of the host's lists, so
// that what the host finds in them afterwards is exactly what is to be done.
// Two forms share this code and differ only in their description.

#include "forms/Form.h"
#include "host/SyncJob.h"

#include <string_view>

namespace fw {

class ListView;
class ctl_CmdBar;
class ctl_Frame;
class ctl_Label;

class SyncConfirmForm : public Form {
  public:
    ~SyncConfirmForm() override;

    /// The host's plan, set before Show; the form only takes entries out.
    SyncActions* Actions = nullptr;
    /// True only after the user confirmed; the lists are then trimmed.
    bool Confirmed = false;

    // Controls, public so that hosts and tests reach them by name.
    ctl_Frame* fra_Information;
    ctl_Label* lab_Description;
    ctl_Frame* fra_Actions;
    ListView* lst_Actions;
    ctl_CmdBar* bar_Buttons;

  protected:
    SyncConfirmForm(const QString& name, const QString& description);
    void Form_Load() override;
    void Form_Resize() override;

  private:
    /// One row per entry of list, counted from 1, keyed "index|key".
    void vList(const StringList& list, std::string_view key, const QString& text,
               const QString& kind);
    /// Takes out the entries whose rows are unchecked, walking backwards so
    /// that the indices of the entries still to look at stay valid.
    void vListS(StringList& list, std::string_view key);
    void bar_Buttons_Script(const QString& script);
    void confirm();
};

/// Two local folders.
class frm_DialogFileSyncConfirm : public SyncConfirmForm {
  public:
    frm_DialogFileSyncConfirm();
};

/// A local folder and an FTP server.
class frm_InternetFTPConfirm : public SyncConfirmForm {
  public:
    frm_InternetFTPConfirm();
};

} // namespace fw

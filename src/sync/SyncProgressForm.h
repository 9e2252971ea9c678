#pragma once
// The progress window of a synchronisation. Its first paint starts the host's
// run, which calls back SHOWTASK, LOG, PROGRESS and LOGERROR while it works
// and asks the window for the confirmation of its plan; the window only
// shows. When the run returns, a timer closes the window. Two forms share
// this code: folder to folder, and folder to FTP server.

#include "controls/ctl_Pannel.h"
#include "forms/ControlArray.h"
#include "forms/Form.h"
#include "host/HostObjects.h"
#include "host/SyncJob.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace fw {

class Label;
class ListItem;
class ListView;
class PictureBox;
class SyncConfirmForm;
class Timer;
class ctl_CmdBar;
class ctl_Frame;
class ctl_Percent;
class ctl_Title;

class SyncProgressForm : public Form, public SyncProgress {
  public:
    ~SyncProgressForm() override;

    /// The two places, set before Show and passed on to the host unread.
    std::string Path1;
    std::string Path2;
    /// The caller's options in, the run's counts out.
    SyncJob Job;
    /// What the host's synchronisation returned (a SyncOutcome); -1 before.
    std::int32_t Result = -1;

    // SyncProgress
    void SHOWTASK(std::int32_t n) override;
    void LOG(const std::string& text) override;
    void PROGRESS(std::int32_t value, std::int32_t max) override;
    void LOGERROR(const std::string& a, const std::string& b, const std::string& c) override;
    bool Cancelled() const override { return cancelFlag(); }
    bool Confirm(SyncActions& actions) override;

    // Controls, public so that hosts and tests reach them by name.
    ctl_Title* ctl_Header1;
    ctl_Frame* fra_Tasks;
    ControlArray<ctl_Pannel> pan_Task;
    ControlArray<PictureBox> img_Task;
    ControlArray<Label> lab_Task;
    ControlArray<Label> lab_TaskDescription;
    Label* lab_ProgressTotal;
    Label* lab_ProgressStep;
    Label* lab_ProgressSub;
    ctl_Percent* bar_ProgressTotal;
    ctl_Percent* bar_ProgressStep;
    ctl_Percent* bar_ProgressSub;
    ListView* lst_Log;
    ListView* lst_Errors;
    ctl_CmdBar* bar_Buttons;
    Timer* tmr_Unload;

  protected:
    using TaskTexts = std::array<std::array<const char*, 2>, 6>;
    SyncProgressForm(const QString& name, const QString& caption, const TaskTexts& tasks);

    /// The host's run, with this window and the form's parameters.
    virtual std::int32_t synchronise() = 0;
    /// The form that confirms this kind of run.
    virtual std::unique_ptr<SyncConfirmForm> makeConfirmForm() const = 0;
    virtual bool cancelFlag() const = 0;
    virtual void setCancelFlag() = 0;

    void Form_Paint() override;
    void Form_QueryUnload(bool& cancel, int unloadMode) override;

  private:
    void buildTasks(const TaskTexts& tasks);
    void buildProgress();
    void buildLists();
    void run();
    void askCancel();
    /// Selects the newest rows of the log and the error list and shows them.
    void showNewestRows();
    void tmr_Unload_Timer();

    bool m_started = false;
    bool m_running = false;
    // Rows added since the window could last be seen; rows are never removed.
    ListItem* m_newestLog = nullptr;
    ListItem* m_newestError = nullptr;
};

/// Two local folders, through the host's file services.
class frm_DialogFileSync : public SyncProgressForm {
  public:
    frm_DialogFileSync();

  protected:
    std::int32_t synchronise() override;
    std::unique_ptr<SyncConfirmForm> makeConfirmForm() const override;
    bool cancelFlag() const override { return m_cancel; }
    void setCancelFlag() override { m_cancel = true; }

  private:
    bool m_cancel = false;
};

/// A local folder (Path1) and an FTP server folder (Path2), through the
/// host's FTP object, which also keeps the cancel flag.
class frm_InternetFTPSync : public SyncProgressForm {
  public:
    frm_InternetFTPSync();

    /// The host's FTP object, set before Show.
    std::shared_ptr<FtpObject> Ftp;

  protected:
    std::int32_t synchronise() override;
    std::unique_ptr<SyncConfirmForm> makeConfirmForm() const override;
    bool cancelFlag() const override { return Ftp && Ftp->Cancel(); }
    void setCancelFlag() override;
};

} // namespace fw

#pragma once
// The host records of one dialog. The host owns them; they outlive the form.

#include "host/KeyedList.h"
#include "host/Picture.h"
#include "host/StringList.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace fw {

class Form;    // opaque here: the host contract knows no dialog
class Control; // opaque here

/// Result codes a dialog writes into DialogRequest::Result.
enum ResultCode : std::int32_t {
    ResultNone = 0,
    ResultOk = 1,
    ResultAbort = 2,
    ResultRetry = 4,
    ResultIgnore = 5, ///< message dialog; "help" in the input forms
    ResultHelp = 5,
    ResultYes = 6,
    ResultNo = 7,
};

/// Parameters of a dialog and its result code.
struct DialogRequest {
    std::int32_t Mode = 0; ///< file chooser: 1 open, anything else save
    PictureOrText Icon;    ///< main icon; empty if none
    StringList FilterList; ///< label, pattern, label, pattern...
    std::int32_t FilterIndex = 0;
    bool Cancelable = false;
    std::string Title;
    std::int32_t Result = ResultNone;
    std::string Subtitle;
    std::string IconPath;
    std::uint32_t Color = 0;
    std::int32_t Flags = 0;
    bool OverwritePrompt = false;
    /// Form icon of the choosers, from a default icon path; may be empty.
    std::function<PicturePtr(const std::string& defaultIconPath)> IconFor;
    PictureOrText Icon2; ///< second icon of the message dialog
};

struct DialogTexts {
    std::string OldValue;
    std::string Description;
    std::string DefaultText;
    std::string InputText;
    std::string Description2;
};

/// One row of a chooser's category bar.
struct CategoryRow {
    std::string Caption;
    std::string IconPath;
    std::string ToolTip;
    std::string Location;
};

struct DialogItems {
    StringList ItemList; ///< entry 1: the proposed, then the chosen file or folder
    std::vector<CategoryRow> CategoryList;
    std::string SingleValue;
    std::string DefaultExtension;
};

/// The host's placement of a form.
class FormPlacement {
public:
    virtual ~FormPlacement() = default;
    virtual void Apply(Form& form, int flag) = 0;
};

/// Receives named events of a dialog such as "FILE.HELP".
class EventSink {
public:
    virtual ~EventSink() = default;
    virtual void Notify(Form& form, const std::string& name) = 0;
};

/// Is told "FILE.PREVIEW" with the selected row's key and the preview surface.
class PreviewSink {
public:
    virtual ~PreviewSink() = default;
    virtual void Notify(Form& form, const std::string& name, const std::string& key,
                        Control* surface) = 0;
};

struct DialogEventLink {
    std::shared_ptr<fw::EventSink> EventSink;     ///< null: the host wants no events
    std::shared_ptr<fw::PreviewSink> PreviewSink; ///< null: no previews
};

struct DialogContext {
    DialogItems Items;
    DialogTexts Texts;
    std::shared_ptr<FormPlacement> FormSetup; ///< null: the form places itself
    DialogRequest Request;
    KeyedList Options;
    DialogEventLink EventLink;
};

using DialogContextPtr = std::shared_ptr<DialogContext>;

} // namespace fw

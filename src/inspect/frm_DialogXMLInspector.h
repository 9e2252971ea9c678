#pragma once
// The XML inspector: shows the tree of an XML document that the host built.
// The host's XML object fills the tree; the form only gives it the tree and
// closes on OK. There is no editing and no searching here.

#include "forms/Form.h"
#include "host/HostObjects.h"

#include <memory>

namespace fw {

class ImageList;
class TreeView;
class ctl_CmdBar;

class frm_DialogXMLInspector : public Form {
  public:
    frm_DialogXMLInspector();
    ~frm_DialogXMLInspector() override;

    /// The host's document, set before Show; it fills tvw_XML on load.
    std::shared_ptr<XmlObject> Xml;
    /// Replaces the caption "XML-Struktur" unless empty.
    QString CaptionText;

    /// "CaptionText".
    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    // Controls, public so that hosts and tests reach them by name.
    ImageList* img_XML;
    TreeView* tvw_XML;
    ctl_CmdBar* bar_Buttons;

  protected:
    void Form_Load() override;
    void Form_Resize() override;

  private:
    void buildControls();
    void bar_Buttons_Script(const QString& script);
};

} // namespace fw

#pragma once
// The network browser: domains, their hosts and the hosts' shares as a tree
// that fills each level the first time it is opened, as asking the network is
// slow. A caller sets BrowseMode to the kind of entry it wants, shows the form
// modally and reads SelectedPath when Accepted is true.

#include "forms/Form.h"

namespace fw {

class ImageList;
class TreeNode;
class TreeView;
class ctl_CmdBar;
class ctl_Title;

class frm_DialogNetworkBrowse : public Form {
  public:
    frm_DialogNetworkBrowse();
    ~frm_DialogNetworkBrowse() override;

    /// What may be chosen.
    enum Mode { ChooseShare = 0, ChooseHost = 1, ChooseDomain = 2 };

    /// The key of the chosen node: "\\HOST\share\" for a share, "\\HOST" for
    /// a host, "DOMAIN:" for a domain (host and domain upper-cased).
    QString SelectedPath;
    /// True after an OK on an entry of the kind asked for.
    bool Accepted = false;
    int BrowseMode = ChooseShare;

    /// "SelectedPath", "Accepted", "BrowseMode".
    QVariant GetPublic(const QString& name) const override;
    bool SetPublic(const QString& name, const QVariant& value) override;

    // Controls, public so that hosts and tests reach them by name.
    ctl_Title* ctl_Title2;
    TreeView* tvw_Network;
    ImageList* img_Network;
    ctl_CmdBar* bar_Buttons;

    /// The text each node starts with until it is first opened.
    static constexpr const char* PlaceholderText = "DUMMY";

  protected:
    void Form_Load() override;

  private:
    void buildControls();
    void tvw_Network_Expand(TreeNode& node);
    void fillDomain(TreeNode& node);
    void fillHost(TreeNode& node);
    void bar_Buttons_Script(const QString& script);
    void acceptSelection();
    QString kindText() const;
};

} // namespace fw

#pragma once
// A scripted host for tests: a complete CoreDev whose services are recording
// fakes. Every call lands in `calls` as "Operation(arg|arg|...)"; answers come
// from per-operation queues, and an empty queue gives the empty answer (empty
// text, false, 0).
//
//     auto host = std::make_shared<fw::testing::TestHost>();
//     fw::ScopedCoreDev scope(host);
//     host->queueQuestionAnswer(fw::ResultYes);
//     ... drive the dialog ...
//     EXPECT_EQ(host->callsTo("AskQuestion").size(), 1u);
//
// Files are the real file system (tests use temporary folders), so that a
// chooser lists what a test created; everything else lives in memory.

#include "host/CoreDev.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fw::testing {

/// A popup menu made by the host's menu service; it keeps what was added.
class TestPopupMenu;

class TestHost : public fw::CoreDev {
  public:
    TestHost();
    ~TestHost() override;

    // --- What the library did -------------------------------------------------

    /// Every host call in order, as "Operation(arg|arg|...)"; operations of helper
    /// objects carry their helper's name where it would be ambiguous, as in
    /// "PopupMenu.Popup(-1|-1)".
    std::vector<std::string> calls;
    /// For each entry of `calls`, the form or control it was about (null if none).
    /// Only compared as addresses, never dereferenced.
    std::vector<const void*> callTargets;

    /// The entries of `calls` made to one operation, in order.
    std::vector<std::string> callsTo(const std::string& operation) const;
    /// Whether any call was made to the operation.
    bool wasCalled(const std::string& operation) const { return !callsTo(operation).empty(); }
    void clearCalls();

    /// Every popup menu made so far, oldest first.
    std::vector<std::shared_ptr<TestPopupMenu>> menus;

    // --- Scripted answers -------------------------------------------------------

    /// The queue of answers of one operation, consumed front first. Numbers and
    /// Booleans are queued as text ("6", "1"/"0"); a Connect answer is "1" or "0"
    /// followed by the host's message. Names as in `calls`: "PopupMenu.Popup".
    std::deque<std::string>& answers(const std::string& operation);

    void queueQuestionAnswer(std::int32_t resultCode); ///< AskQuestion
    void queueSavePath(std::string path);              ///< AskSaveFile; "" cancels
    void queueTextAnswer(std::string text);            ///< AskText
    void queueIconChoice(std::string iconPath);        ///< ChooseIcon
    void queueMenuChoice(std::string key);             ///< PopupMenu.Popup
    /// Network Connect: ok, or failure with the host's message.
    void queueConnectResult(bool ok, std::string message = {});

    /// Operations that throw std::runtime_error when called (after being logged),
    /// for testing that a step is skipped when the host fails.
    std::set<std::string> failing;
    /// Operations that must not be called at all: such calls land in
    /// forbiddenCalls and go to ForbiddenCallHandler, which a test framework
    /// sets once to fail the running test.
    std::set<std::string> forbidden;
    std::vector<std::string> forbiddenCalls;
    static inline std::function<void(const std::string& call)> ForbiddenCallHandler;

    // --- The host's state ---------------------------------------------------

    std::int32_t language = 7;
    /// Named settings such as "Touchmode"; unknown names are false.
    std::map<std::string, bool> settings;
    std::string logStampText = "01.01.2000 12:00:00";
    struct {
        int x = 0, y = 0;
    } mouse; ///< cursor position in screen pixels

    struct Folders {
        std::string desktop, documents;    ///< system folders
        std::string user, samples, shared; ///< the application's folders
    } folders;

    /// Registry values by hive and key ("path\value"); numbers are stored as decimal
    /// text. Keys compare without case, as the registry does.
    void setRegistry(std::uint32_t hive, const std::string& key, std::string value);
    std::optional<std::string> registryValue(std::uint32_t hive, const std::string& key) const;
    std::map<std::pair<std::uint32_t, std::string>, std::string> registry;

    /// Full resource paths that ListResources walks, such as
    /// "Ico\20\Computer\Signs\OK.ico".
    std::vector<std::string> resources;

    /// Resource packages by name (as Load is given it) with their items, for
    /// the package objects that NewResourcePackage hands out. Their calls are
    /// recorded with the package's loaded name first: "Package.Load(NAME)",
    /// "Package.Exists(NAME|item)", "Package.Extract(NAME|item|destination)",
    /// "Package.Content(NAME|path|a|b|c)".
    std::map<std::string, std::vector<std::string>> packages;

    /// Scheme colours by index; unknown indexes give 0.
    std::map<int, std::uint32_t> schemeColours;

    /// Drive types by drive ("C:", "/mnt/x"), for DriveType and DrivesOfType.
    std::map<std::string, int> driveTypes;
    /// Volume labels by drive ("C:").
    std::map<std::string, std::string> volumeLabels;

    /// The application's registry key (CoreDevApp::RegistryKey).
    std::string appRegistryKey = "Software\\Valdrenix\\TestApp\\";
    /// Favourite lists as saved, by registry key.
    std::map<std::string, std::vector<fw::FavoriteItem>> favourites;

    /// The network as the network service shows it.
    struct Network {
        std::vector<std::string> domains;
        std::map<std::string, std::vector<std::string>> hosts;  ///< by domain
        std::map<std::string, std::vector<std::string>> shares; ///< by host
        std::map<std::string, std::string> mapped;              ///< drive -> UNC
        bool absent = false; ///< the host has no network service at all
    } network;

    /// What the file services' synchronise does with the window it is given
    /// (calling SHOWTASK, LOG, ... as a real run would); unset: it returns
    /// the queued number ("synchronise"), 1 when none is queued.
    std::function<std::int32_t(const std::string& path1, const std::string& path2,
                               fw::SyncProgress& window, fw::SyncJob& job)>
        synchroniseScript;

    /// Monitors in pixels; the first is the primary one.
    std::vector<fw::MonitorInfo> monitors{{1, 0, 0, 1920, 1080}};

    // --- CoreDev's own operations -------------------------------------------

    int mouseX() override;
    int mouseY() override;
    /// Accepts "." or "," as decimal mark and surrounding blanks; nothing else.
    double parseNumber(const std::string& text, bool& ok) override;

    // --- For the fakes --------------------------------------------------------

    /// Logs a call; throws if the operation is failing; fails the test if forbidden.
    void record(const std::string& operation, const std::vector<std::string>& args = {},
                const void* target = nullptr);
    /// The next queued answer of an operation, or fallback if none is queued.
    std::string nextAnswer(const std::string& operation, const std::string& fallback = {});
    bool nextBool(const std::string& operation);
    std::int32_t nextNumber(const std::string& operation);

  private:
    std::map<std::string, std::deque<std::string>> m_answers;
};

class TestPopupMenu : public fw::PopupMenu {
  public:
    explicit TestPopupMenu(TestHost& host) : m_host(host) {}
    void AddItem(const std::string& icon, const std::string& caption,
                 const std::string& key) override;
    void AddRows(const std::vector<fw::MenuEntry>& rows) override;
    std::string Popup(int x = -1, int y = -1) override;

    /// Rows as added: "caption|key|-1|-1|0|icon"; rows of a submenu carry
    /// "> " before them, one per level.
    std::vector<std::string> rows;

  private:
    TestHost& m_host;
};

/// The pixel size a resource path names ("Ico\20\..." is 20), 16 if it names none.
int PictureSizeOfPath(const std::string& path);

/// A host together with its installation for the running scope.
class ScopedTestHost {
  public:
    ScopedTestHost()
        : m_host(std::make_shared<TestHost>()), m_previous(fw::CoreDev::Install(m_host))
    {
    }
    ~ScopedTestHost() { fw::CoreDev::Install(std::move(m_previous)); }
    ScopedTestHost(const ScopedTestHost&) = delete;
    ScopedTestHost& operator=(const ScopedTestHost&) = delete;

    TestHost& operator*() const { return *m_host; }
    TestHost* operator->() const { return m_host.get(); }
    const std::shared_ptr<TestHost>& ptr() const { return m_host; }

  private:
    std::shared_ptr<TestHost> m_host;
    std::shared_ptr<fw::CoreDev> m_previous;
};

} // namespace fw::testing

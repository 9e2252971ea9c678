#pragma once
// The desktop host's XML object: reads a file, checks that it is well formed
// and keeps what the tree shows, so that a broken file is reported before any
// window opens. fillTree then shows it:
//   - an element as a node with its tag name, pictures "tag.closed" and, while
//     expanded, "tag.open";
//   - each attribute as a child node "name = value" with the picture "property",
//     before the element's content;
//   - text and CDATA between tags as a child node of its own, blanks folded to
//     single spaces, without a picture; text of blanks alone is left out;
//   - texts and attribute lines are cut after 256 characters with an ellipsis,
//     already while reading;
//   - comments, processing instructions and the document type are left out.
// Names stand as written, prefixes included. The top element is expanded.

#include "host/HostObjects.h"

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <vector>

class QIODevice;

namespace fw::desktop {

class DesktopXml : public XmlObject {
  public:
    enum class Status {
        Ok,
        Unreadable,   ///< the file could not be opened or read
        NotWellFormed ///< Line, Column and Message say where and why
    };
    /// Line and column count from 1; both 0 for a file that cannot be read.
    struct Problem {
        qint64 Line = 0;
        qint64 Column = 0;
        QString Message;
    };

    /// Reads a file; what was loaded before is dropped either way.
    Status Load(const QString& path);
    /// Reads a document from a device or from bytes.
    Status Load(QIODevice& device);
    Status LoadData(const QByteArray& data);
    /// Why the last load failed.
    const Problem& LastProblem() const { return m_problem; }
    /// Elements, attributes and texts read: the nodes fillTree makes.
    int NodeCount() const { return static_cast<int>(m_items.size()); }

    /// Fills a TreeView (std::invalid_argument for another control). Pictures
    /// are used only if the bound image list holds all three keys.
    void fillTree(Control& tree, TreeNode* parent) override;

  private:
    enum class Kind : std::uint8_t { Element, Attribute, Text };
    struct Item {
        int parent; ///< index of the element the item belongs to, -1 at the top
        Kind kind;
        QString text;
    };
    class Reader;
    std::vector<Item> m_items;
    Problem m_problem;
};

} // namespace fw::desktop

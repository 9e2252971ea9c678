#include "desktop/DesktopXml.h"

#include "desktop/DesktopHost.h"

#include "forms/ImageList.h"
#include "forms/TreeView.h"

#include <QBuffer>
#include <QFile>
#include <QHash>
#include <QStringDecoder>
#include <cstring>
#include <expat.h>
#include <stdexcept>

namespace fw::desktop {

namespace {
// A node shows at most this many characters of its text or attribute line;
// reading keeps no more than that, with an ellipsis where it was cut, so an
// entity repeated millions of times costs no memory beyond it.
constexpr qsizetype kTextLimit = 256;
const QChar kCut(0x2026);

QString cut(QString text)
{
    if (text.size() > kTextLimit) {
        text.truncate(kTextLimit);
        text += kCut;
    }
    return text;
}

// The text between two tags as it arrives in pieces: blanks folded to single
// spaces, none at either end, and cut at the limit.
class ShownText {
  public:
    void append(QStringView piece)
    {
        for (const QChar c : piece) {
            if (m_cut)
                return;
            if (c.isSpace()) {
                m_blank = !m_text.isEmpty();
                continue;
            }
            if (std::exchange(m_blank, false))
                push(u' ');
            push(c);
        }
    }
    bool full() const { return m_cut; }
    /// The text so far, and a fresh start.
    QString take()
    {
        QString text = std::exchange(m_text, QString());
        if (std::exchange(m_cut, false))
            text += kCut;
        m_blank = false;
        return text;
    }

  private:
    void push(QChar c)
    {
        if (m_text.size() == kTextLimit)
            m_cut = true;
        else
            m_text += c;
    }
    QString m_text;
    bool m_blank = false;
    bool m_cut = false;
};
} // namespace

DesktopXml::Status DesktopXml::Load(const QString& path)
{
    m_items.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_problem = {0, 0, file.errorString()};
        return Status::Unreadable;
    }
    return Load(file);
}

DesktopXml::Status DesktopXml::LoadData(const QByteArray& data)
{
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    return Load(buffer);
}

// Expat rather than QXmlStreamReader: Qt compares every attribute of a tag
// with every other one, which takes most of a minute for an element with a
// hundred thousand attributes; expat finds repeated names through its name
// table, and it parses faster besides.
class DesktopXml::Reader {
  public:
    explicit Reader(std::vector<Item>& items) : m_items(items), m_parser(XML_ParserCreate(nullptr))
    {
        XML_SetUserData(m_parser, this);
        XML_SetElementHandler(m_parser, &Reader::start, &Reader::end);
        XML_SetCharacterDataHandler(m_parser, &Reader::characters);
        XML_SetUnknownEncodingHandler(m_parser, &Reader::unknownEncoding, nullptr);
    }
    ~Reader() { XML_ParserFree(m_parser); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// Feeds a piece of the document; false once it is found not well formed.
    bool feed(const char* data, int size, bool last)
    {
        return XML_Parse(m_parser, data, size, last) == XML_STATUS_OK;
    }
    Problem problem() const
    {
        // Expat counts columns from 0; people and editors from 1.
        return {qint64(XML_GetCurrentLineNumber(m_parser)),
                qint64(XML_GetCurrentColumnNumber(m_parser)) + 1,
                QString::fromUtf8(XML_ErrorString(XML_GetErrorCode(m_parser)))};
    }

  private:
    static void start(void* self, const XML_Char* name, const XML_Char** attributes)
    {
        auto& r = *static_cast<Reader*>(self);
        r.flushText();
        const int index = int(r.m_items.size());
        r.m_items.push_back(
            {r.m_open.empty() ? -1 : r.m_open.back(), Kind::Element, r.nameOf(name)});
        for (const XML_Char** a = attributes; *a; a += 2) {
            // Only the start of a long value is decoded.
            const QByteArrayView value(a[1], qsizetype(std::strlen(a[1])));
            r.m_line.clear();
            r.m_line.append(a[0]).append(" = ").append(
                value.first(std::min(value.size(), 4 * (kTextLimit + 1))));
            r.m_items.push_back({index, Kind::Attribute, cut(QString::fromUtf8(r.m_line))});
        }
        r.m_open.push_back(index);
    }
    static void end(void* self, const XML_Char*)
    {
        auto& r = *static_cast<Reader*>(self);
        r.flushText();
        r.m_open.pop_back();
    }
    static void characters(void* self, const XML_Char* text, int length)
    {
        auto& r = *static_cast<Reader*>(self);
        if (!r.m_text.full())
            r.m_text.append(QString(r.m_decoder.decode(QByteArrayView(text, length))));
    }
    // Single-byte encodings that expat does not know itself (windows-1252,
    // ISO-8859-15...) are mapped byte by byte through Qt's converters.
    static int unknownEncoding(void*, const XML_Char* name, XML_Encoding* info)
    {
        QStringDecoder decoder(name);
        if (!decoder.isValid())
            return XML_STATUS_ERROR;
        for (int byte = 0; byte < 256; ++byte) {
            const char c = char(byte);
            const QString decoded = decoder.decode(QByteArrayView(&c, 1));
            decoder.resetState();
            if (decoded.size() != 1)
                return XML_STATUS_ERROR; // not a single-byte encoding
            info->map[byte] = decoded.at(0).unicode();
        }
        info->data = nullptr;
        info->convert = nullptr;
        info->release = nullptr;
        return XML_STATUS_OK;
    }
    // Element names repeat throughout a document; their nodes share one copy.
    const QString& nameOf(const char* name)
    {
        const QByteArray key = QByteArray::fromRawData(name, qsizetype(std::strlen(name)));
        auto it = m_names.constFind(key);
        if (it == m_names.cend())
            it = m_names.insert(QByteArray(name), QString::fromUtf8(key));
        return *it;
    }
    void flushText()
    {
        QString text = m_text.take();
        m_decoder.resetState();
        if (!text.isEmpty() && !m_open.empty())
            m_items.push_back({m_open.back(), Kind::Text, std::move(text)});
    }

    std::vector<Item>& m_items;
    XML_Parser m_parser;
    std::vector<int> m_open;
    ShownText m_text;
    // Expat hands over UTF-8, whatever the document's encoding.
    QStringDecoder m_decoder{QStringDecoder::Utf8};
    QByteArray m_line;
    QHash<QByteArray, QString> m_names;
};

DesktopXml::Status DesktopXml::Load(QIODevice& device)
{
    m_items.clear();
    m_problem = {};
    Reader reader(m_items);
    QByteArray chunk(1 << 20, Qt::Uninitialized);
    for (;;) {
        const qint64 got = device.read(chunk.data(), chunk.size());
        if (got < 0) {
            m_problem = {0, 0, device.errorString()};
            m_items.clear();
            return Status::Unreadable;
        }
        const bool last = got == 0;
        if (!reader.feed(chunk.constData(), int(got), last)) {
            m_problem = reader.problem();
            m_items.clear();
            return Status::NotWellFormed;
        }
        if (last)
            return Status::Ok;
    }
}

void DesktopXml::fillTree(Control& tree, TreeNode* parent)
{
    auto* view = dynamic_cast<TreeView*>(&tree);
    if (!view)
        throw std::invalid_argument("XML trees fill a TreeView");
    const QString closed = QStringLiteral("tag.closed");
    const QString opened = QStringLiteral("tag.open");
    const QString property = QStringLiteral("property");
    const ImageList* images = view->GetImageList();
    const bool pictures =
        images && images->Exists(closed) && images->Exists(opened) && images->Exists(property);
    const QString none;

    TreeNodes& nodes = view->Nodes();
    // The node of each element, by its index among the items.
    std::vector<TreeNode*> made(m_items.size(), nullptr);
    TreeNode* top = nullptr;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        const Item& item = m_items[i];
        TreeNode* under = item.parent < 0 ? parent : made[std::size_t(item.parent)];
        const QString& image = !pictures                      ? none
                               : item.kind == Kind::Element   ? closed
                               : item.kind == Kind::Attribute ? property
                                                              : none;
        TreeNode& node = nodes.Add(under, under ? tvwChild : tvwLast, {}, item.text, image);
        if (item.kind != Kind::Element)
            continue;
        made[i] = &node;
        if (pictures)
            node.SetExpandedImage(opened);
        if (!top && item.parent < 0)
            top = &node;
    }
    if (top && !parent)
        top->SetExpanded(true);
}

} // namespace fw::desktop

namespace fw::desktop {

std::shared_ptr<DesktopXml> MakeDesktopXml()
{
    return std::make_shared<DesktopXml>();
}

} // namespace fw::desktop

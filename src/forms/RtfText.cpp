#include "forms/RtfText.h"

#include <QStringList>
#include <array>
#include <vector>

namespace fw {

namespace {

// Windows-1252 differs from Latin-1 in 0x80..0x9F; unassigned bytes map to U+FFFD.
constexpr std::array<char16_t, 32> kCp1252High{
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

QChar fromCp1252(int byte)
{
    if (byte >= 0x80 && byte < 0xA0)
        return QChar(kCp1252High[std::size_t(byte - 0x80)]);
    return QChar(char16_t(byte));
}

// Destinations whose contents are not part of the text.
bool isSkippedDestination(const QString& word)
{
    static const QStringList skipped{
        QStringLiteral("fonttbl"),
        QStringLiteral("colortbl"),
        QStringLiteral("stylesheet"),
        QStringLiteral("info"),
        QStringLiteral("pict"),
        QStringLiteral("object"),
        QStringLiteral("fldinst"),
        QStringLiteral("header"),
        QStringLiteral("headerl"),
        QStringLiteral("headerr"),
        QStringLiteral("headerf"),
        QStringLiteral("footer"),
        QStringLiteral("footerl"),
        QStringLiteral("footerr"),
        QStringLiteral("footerf"),
        QStringLiteral("listtable"),
        QStringLiteral("listoverridetable"),
        QStringLiteral("rsidtbl"),
        QStringLiteral("generator"),
        QStringLiteral("xmlnstbl"),
        QStringLiteral("themedata"),
        QStringLiteral("colorschememapping"),
        QStringLiteral("latentstyles"),
        QStringLiteral("datastore"),
        QStringLiteral("filetbl"),
        QStringLiteral("revtbl"),
        QStringLiteral("pntext"),
        QStringLiteral("pntxta"),
        QStringLiteral("pntxtb"),
    };
    return skipped.contains(word);
}

struct GroupState {
    bool skip = false; ///< inside a destination without text
    int fallback = 1;  ///< characters after \uN that stand in for it (\ucN)
};

class Reader {
  public:
    explicit Reader(const QString& rtf) : m_in(rtf) {}

    QString run()
    {
        m_stack.push_back({});
        while (m_at < m_in.size()) {
            const QChar c = m_in[m_at++];
            if (c == u'{') {
                m_stack.push_back(m_stack.back());
                m_groupStart = true;
                continue;
            }
            if (c == u'}') {
                if (m_stack.size() > 1)
                    m_stack.pop_back();
                m_groupStart = false;
                continue;
            }
            if (c == u'\\') {
                controlSequence();
                continue;
            }
            m_groupStart = false;
            // Line breaks in the source are for its writer; \par breaks lines.
            if (c == u'\r' || c == u'\n')
                continue;
            put(c);
        }
        return m_out;
    }

  private:
    GroupState& state() { return m_stack.back(); }

    void put(QChar c)
    {
        if (m_pendingSkip > 0) {
            --m_pendingSkip;
            return;
        }
        if (!state().skip)
            m_out += c;
    }

    void controlSequence()
    {
        const bool atGroupStart = m_groupStart;
        m_groupStart = false;
        if (m_at >= m_in.size())
            return;
        const QChar c = m_in[m_at];
        if (!c.isLetter() || c.unicode() > 0x7F) {
            ++m_at;
            controlSymbol(c, atGroupStart);
            return;
        }
        QString word;
        while (m_at < m_in.size() && m_in[m_at].unicode() < 0x80 && m_in[m_at].isLetter())
            word += m_in[m_at++];
        bool hasParameter = false;
        int parameter = 0;
        qsizetype start = m_at;
        if (m_at < m_in.size() && m_in[m_at] == u'-')
            ++m_at;
        while (m_at < m_in.size() && m_in[m_at].isDigit() && m_in[m_at].unicode() < 0x80)
            ++m_at;
        if (m_at > start && !(m_at == start + 1 && m_in[start] == u'-')) {
            hasParameter = true;
            parameter = m_in.mid(start, m_at - start).toInt();
        } else {
            m_at = start;
        }
        if (m_at < m_in.size() && m_in[m_at] == u' ')
            ++m_at; // the delimiter belongs to the control word
        controlWord(word, hasParameter, parameter, atGroupStart);
    }

    void controlSymbol(QChar c, bool atGroupStart)
    {
        switch (c.unicode()) {
        case u'\\':
        case u'{':
        case u'}':
            put(c);
            break;
        case u'~':
            put(QChar(0x00A0));
            break;
        case u'_':
            put(QChar(0x2011));
            break;
        case u'*':
            // "{\*\dest ...}": a destination this reader does not know holds no text.
            if (atGroupStart)
                state().skip = true;
            break;
        case u'\'': {
            const QString hex = m_in.mid(m_at, 2);
            m_at += hex.size();
            bool ok = false;
            const int byte = hex.toInt(&ok, 16);
            if (ok)
                put(fromCp1252(byte));
            break;
        }
        case u'\r':
        case u'\n':
            put(u'\n'); // an escaped line break is a paragraph
            break;
        default:
            break; // optional hyphens and other marks show nothing
        }
    }

    void controlWord(const QString& word, bool hasParameter, int parameter, bool atGroupStart)
    {
        if (atGroupStart && isSkippedDestination(word)) {
            state().skip = true;
            return;
        }
        if (word == u"par" || word == u"line" || word == u"sect" || word == u"page" ||
            word == u"row")
            put(u'\n');
        else if (word == u"tab" || word == u"cell")
            put(u'\t');
        else if (word == u"emdash")
            put(QChar(0x2014));
        else if (word == u"endash")
            put(QChar(0x2013));
        else if (word == u"bullet")
            put(QChar(0x2022));
        else if (word == u"lquote")
            put(QChar(0x2018));
        else if (word == u"rquote")
            put(QChar(0x2019));
        else if (word == u"ldblquote")
            put(QChar(0x201C));
        else if (word == u"rdblquote")
            put(QChar(0x201D));
        else if (word == u"uc" && hasParameter)
            state().fallback = std::max(0, parameter);
        else if (word == u"u" && hasParameter) {
            // A signed 16-bit value: negative numbers stand for the upper half.
            put(QChar(char16_t(parameter < 0 ? parameter + 65536 : parameter)));
            m_pendingSkip = state().fallback;
        } else if (word == u"bin" && hasParameter) {
            m_at += std::max(0, parameter);
        }
    }

    const QString& m_in;
    qsizetype m_at = 0;
    QString m_out;
    std::vector<GroupState> m_stack;
    bool m_groupStart = false;
    int m_pendingSkip = 0;
};

} // namespace

QString RtfToPlainText(const QString& rtf)
{
    return Reader(rtf).run();
}

QString PlainTextToRtf(const QString& text)
{
    QString rtf = QStringLiteral("{\\rtf1\\ansi\\uc1 ");
    for (const QChar c : text) {
        if (c == u'\\' || c == u'{' || c == u'}')
            rtf += u'\\', rtf += c;
        else if (c == u'\n')
            rtf += QStringLiteral("\\par\n");
        else if (c == u'\t')
            rtf += QStringLiteral("\\tab ");
        else if (c == u'\r')
            continue;
        else if (c.unicode() < 0x80)
            rtf += c;
        else
            rtf += QStringLiteral("\\u%1?").arg(qint16(c.unicode()));
    }
    return rtf + u'}';
}

} // namespace fw

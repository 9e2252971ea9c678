#include "cli/Arguments.h"

#include "cli/EscapedBytes.h"
#include "cli/Options.h"

#include <clocale>
#include <cstring>
#include <iconv.h>
#include <langinfo.h>
#include <optional>

namespace fw::cli {

namespace {

// glibc's iconv knows every encoding a locale can name; Qt's own converters
// know only the Unicode ones and Latin-1.
std::optional<QString> fromCodeset(const QByteArray& bytes, const char* codeset)
{
    iconv_t converter = iconv_open("UTF-8", codeset);
    if (converter == iconv_t(-1))
        return std::nullopt;
    QByteArray utf8(bytes.size() * 4 + 4, Qt::Uninitialized);
    char* in = const_cast<char*>(bytes.constData());
    size_t inLeft = size_t(bytes.size());
    char* out = utf8.data();
    size_t outLeft = size_t(utf8.size());
    const bool ok = iconv(converter, &in, &inLeft, &out, &outLeft) != size_t(-1) &&
                    iconv(converter, nullptr, nullptr, &out, &outLeft) != size_t(-1);
    iconv_close(converter);
    if (!ok)
        return std::nullopt;
    utf8.truncate(out - utf8.data());
    return QString::fromUtf8(utf8);
}

// The C and POSIX locales name ASCII, but a shell there passes UTF-8 file
// names and texts all the same; Qt and Python read them as UTF-8 too.
bool readsAsUtf8(const char* codeset)
{
    return std::strcmp(codeset, "UTF-8") == 0 || std::strcmp(codeset, "ANSI_X3.4-1968") == 0;
}

} // namespace

QStringList DecodeArguments(int argc, char** argv, void (*warn)(const QString& line))
{
    // QApplication sets the locale later; the encoding is needed now.
    std::setlocale(LC_CTYPE, "");
    const char* codeset = nl_langinfo(CODESET);
    const QString encoding =
        readsAsUtf8(codeset) ? QStringLiteral("UTF-8") : QString::fromLatin1(codeset);
    QStringList args;
    for (int i = 1; i < argc; ++i) {
        const QByteArray bytes(argv[i]);
        // Undecodable bytes stay as escapes, so that a file name reaches the
        // file unchanged; only a text shows them as U+FFFD, and only then is
        // it news.
        std::optional<QString> text =
            readsAsUtf8(codeset) ? std::nullopt : fromCodeset(bytes, codeset);
        if (!text)
            text = DecodeEscaped(bytes);
        const bool isPath = TakesBytes(args.value(i - 2), *text);
        if (HoldsEscapedBytes(*text) && !isPath)
            warn(QStringLiteral("argument %1 \"%2\" is not valid %3 text; the bytes that do not "
                                "decode read as \uFFFD")
                     .arg(i)
                     .arg(WithReplacementCharacters(*text), encoding));
        args << *text;
    }
    return args;
}

} // namespace fw::cli

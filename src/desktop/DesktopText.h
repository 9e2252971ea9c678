#pragma once
// Text tools of the desktop host: words, pairs and paths.

#include "host/CoreDevServices.h"

namespace fw::desktop {

/// Words: flag true compares the separator case-insensitively (ASCII).
/// TextBefore gives the text before the first separator, the whole text if
/// there is none; TextBeforeLast the same for the last separator; TextAfter
/// the text after the first separator, empty if there is none.
///
/// Pairs: "<length of first>:" + first + second, so that any two texts,
/// separators and line breaks included, come back unchanged. Unpack of a text
/// not made by Pack gives false, the whole text as first and an empty second.
///
/// Paths: both "/" and "\" separate, because the dialogs use the same helper
/// on location strings ("C:\home\anna\x.txt"), on Linux paths and on
/// backslash resource paths. AddBackslash and Combine add the separator the
/// path already uses ("\" if it has a backslash and no slash, or is a drive
/// such as "D:"; else "/"); the names are kept from the interface. Names with
/// escaped characters (LocationPaths.h) hold no separator and split like any.
///  - AddBackslash("/a/b") "/a/b/", ("D:") "D:\"; empty stays empty.
///  - DrivePart: "C:" of "C:\..." and of "C:", "DESKTOP:" of a pseudo path,
///    "\\host\share" of a UNC path, "/" of a Linux path, else empty ("sub\x",
///    "..\x", and a name with a colon of its own such as "a:b.txt").
///  - FolderPart("C:\a\b.txt") "C:\a\": everything up to the last separator;
///    empty for "D:" and for a bare name.
///  - FileName("C:\a\b.txt") "b.txt": everything after it.
///  - Extension("c.tar.gz") "gz", without the dot; empty for ".profile".
///  - FolderName("/a/b/") and FolderName("/a/b") "b": the last named component.
///  - ParentPath("C:\a\b") and ("C:\a\b\") "C:\a\"; a root has none ("").
///  - ParentText("/a/b/c") "b": the parent's name.
///  - Combine(folder, name): name below folder, with "." and ".." steps taken
///    but never above the folder's drive, share or "/" ("C:\a\" + "..\x" is
///    "C:\x"). A name that is a place of its own ("D:\x", "\\srv\share")
///    stands alone; a name with one leading "\" goes below the drive of a
///    drive folder ("\tmp" below "C:\a\" is "C:\tmp"). An empty folder gives
///    the name.
class DesktopText final : public CoreDevText, WordHelper, PairHelper, PathHelper {
  public:
    WordHelper& Words() override { return *this; }
    PairHelper& Pairs() override { return *this; }
    PathHelper& Paths() override { return *this; }

    std::string TextBefore(const std::string& text, const std::string& sep, bool flag) override;
    std::string TextBeforeLast(const std::string& text, const std::string& sep, bool flag) override;
    std::string TextAfter(const std::string& text, const std::string& sep, bool flag) override;
    bool Like(const std::string& text, const std::string& pattern) override;

    std::string Pack(const std::string& first, const std::string& second) override;
    bool Unpack(const std::string& packed, std::string& first, std::string& second) override;

    std::string AddBackslash(const std::string& path) override;
    std::string DrivePart(const std::string& path) override;
    std::string FolderPart(const std::string& path) override;
    std::string ParentText(const std::string& path) override;
    std::string FolderName(const std::string& path) override;
    std::string Extension(const std::string& path) override;
    std::string FileName(const std::string& path) override;
    std::string Combine(const std::string& folder, const std::string& name) override;
    std::string ParentPath(const std::string& path) override;
    /// A typed Linux path ("/etc/hosts", "~/x.txt") as a "C:\\" location.
    std::string TypedPath(const std::string& typed) override;
};

} // namespace fw::desktop

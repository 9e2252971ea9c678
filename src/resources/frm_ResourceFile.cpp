#include "resources/frm_ResourceFile.h"

#include "forms/ImageList.h"

namespace fw {

namespace {

ImageList& MakeList(Form& form, const QString& name, int size)
{
    auto* list = form.Add<ImageList>(name);
    list->SetImageSize(size, size);
    return *list;
}

} // namespace

frm_ResourceFile::frm_ResourceFile()
    : Form(QStringLiteral("frm_ResourceFile")),
      img_Icon16(MakeList(*this, QStringLiteral("img_Icon16"), 16)),
      img_Icon32(MakeList(*this, QStringLiteral("img_Icon32"), 32))
{
    SetCaption(QStringLiteral("FILE ICON RESOURCE"));
}

frm_ResourceFile& frm_ResourceFile::Default()
{
    // Never deleted on purpose: the lists serve every chooser of the process,
    // and a form torn down after the application object would outlive Qt.
    static frm_ResourceFile* instance = new frm_ResourceFile();
    return *instance;
}

} // namespace fw

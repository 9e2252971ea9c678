// The XML inspector on a generated 10 MB document: parsing alone with the
// parser the desktop host uses (expat), reading the file into the host's XML object,
// filling the tree from it, and the whole way from the file to the painted
// inspector. Filling should cost no more than the parse.
#include "desktop/DesktopXml.h"
#include "forms/Form.h"
#include "forms/ImageList.h"
#include "forms/TreeView.h"
#include "inspect/frm_DialogXMLInspector.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <expat.h>

namespace {

// Articles of a catalogue, each an element with three attributes and two
// child elements with text: eight tree nodes in about 200 bytes.
QString makeDocument(const QTemporaryDir& dir, qint64 bytes)
{
    QFile file(dir.filePath(QStringLiteral("katalog.xml")));
    file.open(QIODevice::WriteOnly);
    file.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<katalog>\n");
    for (int i = 0; file.size() < bytes; ++i) {
        const QByteArray n = QByteArray::number(i);
        file.write("  <artikel nr=\"" + n + "\" preis=\"" + QByteArray::number(i % 997) +
                   ".95\" lager=\"ja\">\n    <name>Schraube M" + QByteArray::number(i % 12) +
                   " Nr. " + n + "</name>\n    <beschreibung>Verzinkt, Kreuzschlitz, Packung zu " +
                   QByteArray::number(10 + i % 90) +
                   " St\xc3\xbc"
                   "ck</beschreibung>\n  </artikel>\n");
    }
    file.write("</katalog>\n");
    return file.fileName();
}

const QString& document()
{
    static QTemporaryDir dir;
    static const QString path = makeDocument(dir, 10 * 1024 * 1024);
    return path;
}

class TreeForm : public fw::Form {
  public:
    TreeForm() : Form(QStringLiteral("frm_Bench"))
    {
        img = Add<fw::ImageList>(QStringLiteral("img_XML"));
        for (const char* key : {"tag.closed", "tag.open", "property"})
            img->Add(key, QImage(16, 16, QImage::Format_ARGB32));
        tvw = Add<fw::TreeView>(QStringLiteral("tvw_XML"));
        tvw->SetImageList(img);
    }
    fw::ImageList* img;
    fw::TreeView* tvw;
};

// Expat with handlers that only count, reading the file in the same pieces.
void ParseOnly(benchmark::State& state)
{
    std::int64_t counted = 0;
    QByteArray chunk(1 << 20, Qt::Uninitialized);
    for (auto _ : state) {
        QFile file(document());
        file.open(QIODevice::ReadOnly);
        XML_Parser parser = XML_ParserCreate(nullptr);
        XML_SetUserData(parser, &counted);
        XML_SetElementHandler(
            parser,
            [](void* n, const XML_Char*, const XML_Char** atts) {
                for (; *atts; atts += 2)
                    ++*static_cast<std::int64_t*>(n);
            },
            [](void* n, const XML_Char*) { ++*static_cast<std::int64_t*>(n); });
        XML_SetCharacterDataHandler(parser, [](void* n, const XML_Char*, int length) {
            *static_cast<std::int64_t*>(n) += length;
        });
        for (qint64 got = 1; got > 0;) {
            got = file.read(chunk.data(), chunk.size());
            XML_Parse(parser, chunk.constData(), int(got), got == 0);
        }
        XML_ParserFree(parser);
    }
    benchmark::DoNotOptimize(counted);
    state.SetBytesProcessed(state.iterations() * QFile(document()).size());
}
BENCHMARK(ParseOnly)->Unit(benchmark::kMillisecond)->UseRealTime();

void LoadIntoXmlObject(benchmark::State& state)
{
    for (auto _ : state) {
        fw::desktop::DesktopXml xml;
        benchmark::DoNotOptimize(xml.Load(document()));
        state.counters["nodes"] = xml.NodeCount();
    }
    state.SetBytesProcessed(state.iterations() * QFile(document()).size());
}
BENCHMARK(LoadIntoXmlObject)->Unit(benchmark::kMillisecond)->UseRealTime();

void FillTreeFromLoaded(benchmark::State& state)
{
    fw::desktop::DesktopXml xml;
    xml.Load(document());
    TreeForm form;
    for (auto _ : state) {
        xml.fillTree(*form.tvw, nullptr);
        state.PauseTiming();
        form.tvw->Nodes().Clear();
        state.ResumeTiming();
    }
    state.counters["nodes"] = xml.NodeCount();
}
BENCHMARK(FillTreeFromLoaded)->Unit(benchmark::kMillisecond)->UseRealTime();

// From the file to the inspector's first paint, as the formwerk command does it.
void FileToPaintedInspector(benchmark::State& state)
{
    for (auto _ : state) {
        auto xml = std::make_shared<fw::desktop::DesktopXml>();
        xml->Load(document());
        auto form = std::make_unique<fw::frm_DialogXMLInspector>();
        form->Xml = xml;
        form->Show();
        while (!form->HasPainted())
            QApplication::processEvents(QEventLoop::AllEvents, 5);
        state.PauseTiming();
        form->Unload();
        form.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(FileToPaintedInspector)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

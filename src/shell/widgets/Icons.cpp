#include "shell/widgets/Icons.h"

#include <QFile>
#include <QImage>
#include <QPixmap>

#include "shell/widgets/Colours.h"

// The resource lies in a static library, where nothing else would pull it in.
static void loadResource() { Q_INIT_RESOURCE(brenvik_icons); }

namespace brenvik {
namespace {

constexpr int Sizes[] = {16, 24, 32, 48};
constexpr int LargestProgramSize = 256;
constexpr int ProgramSizes[] = {16, 24, 32, 48, LargestProgramSize};
const QString ProgramName = QStringLiteral("brenvik");

QString fileName(const QString& name, int size) { return QStringLiteral(":/icons/%1-%2.png").arg(name).arg(size); }

QImage tinted(QImage image, const QColor& base, const QColor& accent) {
    image = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int share = qBlue(line[x]);
            const auto mix = [share](int from, int to) { return (from * (255 - share) + to * share) / 255; };
            line[x] = qRgba(mix(base.red(), accent.red()), mix(base.green(), accent.green()), mix(base.blue(), accent.blue()), qAlpha(line[x]));
        }
    }
    return image;
}

QIcon tintedIcon(const QString& name, const QPalette& palette) {
    QIcon icon;
    const QColor disabled = palette.color(QPalette::Disabled, QPalette::ButtonText);
    for (int size : Sizes) {
        const QImage image(fileName(name, size));
        if (image.isNull()) continue;
        icon.addPixmap(QPixmap::fromImage(tinted(image, palette.color(QPalette::ButtonText), accentColour(palette))), QIcon::Normal);
        icon.addPixmap(QPixmap::fromImage(tinted(image, disabled, disabled)), QIcon::Disabled);
        const QColor marked = palette.color(QPalette::HighlightedText);
        icon.addPixmap(QPixmap::fromImage(tinted(image, marked, marked)), QIcon::Selected);
    }
    return icon;
}

}  // namespace

IconSet::IconSet(const QPalette& palette) : palette_(palette) { loadResource(); }

void IconSet::setPalette(const QPalette& palette) {
    palette_ = palette;
    icons_.clear();
}

QIcon IconSet::get(const QString& name) {
    if (name.isEmpty()) return {};
    auto found = icons_.constFind(name);
    if (found == icons_.constEnd()) found = icons_.insert(name, tintedIcon(name, palette_));
    return *found;
}

QIcon IconSet::tree(const TreeNode& node) {
    switch (node.art) {
        case TreeNode::Art::Root: return program();
        case TreeNode::Art::Gruppe: return get(QStringLiteral("baum1"));
        case TreeNode::Art::Version: return get(QStringLiteral("baum-version"));
        case TreeNode::Art::Tipp: break;
    }
    const QIcon own = get(QStringLiteral("baum%1").arg(node.symbol));
    return own.isNull() ? get(QStringLiteral("baum2")) : own;
}

QIcon IconSet::program() {
    loadResource();
    QIcon icon;
    for (int size : ProgramSizes)
        if (QFile::exists(fileName(ProgramName, size))) icon.addFile(fileName(ProgramName, size));
    return icon;
}

QPixmap IconSet::programPixmap(int size, double pixelRatio) {
    loadResource();
    QPixmap pixmap(fileName(ProgramName, LargestProgramSize));
    if (pixmap.isNull()) return pixmap;
    pixmap = pixmap.scaled(QSize(size, size) * pixelRatio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

}  // namespace brenvik

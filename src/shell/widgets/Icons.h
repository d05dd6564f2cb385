#pragma once
// The program's pictures. The sources are drawn in black with blue accents; black takes the palette's text colour and
// blue its accent, so that one set serves light and dark.
#include <QHash>
#include <QIcon>
#include <QPalette>
#include <QString>

#include "tipengine/MainWindow.h"

namespace brenvik {

class IconSet {
public:
    explicit IconSet(const QPalette& palette);

    void setPalette(const QPalette& palette);
    QIcon get(const QString& name);              // "speichern"; an icon that does not exist is an empty one
    QIcon tree(const TreeNode& node);            // by kind of node and its image number
    static QIcon program();                      // not tinted
    static QPixmap programPixmap(int size, double pixelRatio);

private:
    QHash<QString, QIcon> icons_;
    QPalette palette_;
};

}  // namespace brenvik

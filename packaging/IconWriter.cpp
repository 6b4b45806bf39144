#include "host/windows/AppIcon.h"

#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <QString>

#include <cstdlib>
#include <iostream>

/// Writes the program's icon as pictures: icon_writer FOLDER SIZE... makes FOLDER/<size>x<size>/apps/distinte.png.
int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    const QIcon icon = host::applicationIcon();
    for (int i = 2; i < argc; ++i) {
        const int size = std::atoi(argv[i]);
        const QString folder = QStringLiteral("%1/%2x%2/apps").arg(QString::fromLocal8Bit(argv[1])).arg(size);
        const QPixmap picture = icon.pixmap(QSize(size, size), 1.0);
        if (picture.width() != size || !QDir().mkpath(folder) ||
            !picture.save(folder + QStringLiteral("/distinte.png"))) {
            std::cerr << "icon_writer: no picture of " << argv[i] << " pixels in " << argv[1] << std::endl;
            return 1;
        }
    }
    return 0;
}

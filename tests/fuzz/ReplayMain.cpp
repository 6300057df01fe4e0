// Runs a fuzz target once over every file in the folders named; fails when there is nothing to run.

#include "fuzz/FuzzSupport.h"

#include <QDirIterator>
#include <QFile>

int main(int argc, char **argv) {
    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        QDirIterator files(QString::fromLocal8Bit(argv[i]), QDir::Files);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "cannot read %s\n", qPrintable(file.fileName()));
                return 1;
            }
            std::printf("%s\n", qPrintable(file.fileName()));
            std::fflush(stdout); // the last name shown is the one that broke a promise
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()),
                                   static_cast<size_t>(bytes.size()));
            ++inputs;
        }
    }
    return inputs > 0 ? 0 : 1;
}

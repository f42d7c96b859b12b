// SPDX-License-Identifier: MIT
#include <QDirIterator>
#include <QFile>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Replays files, or all files below folders, through the fuzz target that this is linked with.
int main(int argc, char** argv)
{
    int replayed = 0;
    const auto replay = [&replayed](const QString& path) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly)) {
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()), size_t(bytes.size()));
            ++replayed;
        }
    };
    for (int i = 1; i < argc; ++i) {
        const QString path = QString::fromLocal8Bit(argv[i]);
        replay(path);
        for (QDirIterator it(path, QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
            replay(it.next());
        }
    }
    std::printf("%d inputs replayed\n", replayed);
    return replayed > 0 ? 0 : 1;
}

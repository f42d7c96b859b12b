#include "PathNames.h"

QStringView lastPathComponent(QStringView path)
{
    while (path.size() > 1 && path.endsWith(u'/')) {
        path.chop(1);
    }
    return path.size() > 1 ? path.sliced(path.lastIndexOf(u'/') + 1) : path;
}

// The whole calendar file: the input is written as calendar.cal in a fresh
// application folder and the program starts on it as it would at the user's
// login, headless (Form_Load with a window port and the silent modal seam),
// then the first block is clicked and the program is closed.

#include "fuzz_support.h"

#include "shell/single_instance.h"
#include "shell/startup.h"
#include "views/day_view.h"

#include <QFile>
#include <QTemporaryDir>
#include <memory>

using namespace orva;

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::init_process();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    QTemporaryDir dir;
    if (!dir.isValid()) return 0;
    {
        QFile cal(dir.filePath(QStringLiteral("calendar.cal")));
        if (!cal.open(QIODevice::WriteOnly)) return 0;
        cal.write(reinterpret_cast<const char*>(data), qint64(size));
    }
    auto s = std::make_unique<AppState>();
    fuzz::FuzzWindow w(s->view());
    s->app_path = dir.path();
    SingleInstance instance(dir.path());
    if (!Form_Load(*s, w, instance)) return 0;
    if (!s->first_row.isEmpty())
        vsSched_Click(s->store(), s->view(), s->options(), s->editing(), s->first_row.toInt(),
                      s->first_col.toInt());
    confirm_exit(s->store(), s->view(), s->options(), s->run(), w);
    return 0;
}

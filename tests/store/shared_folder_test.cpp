// A second process that only reads the calendar, in the same data folder as
// the program writing it: what the writer stores must all be there after.
#include "store/calendar_file.h"
#include "store_fixtures.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace orva;
using orva::testing::make_appt;

TEST(SharedFolder, AProcessReadingMonthsBesideTheWriterNeverCostsTheWriterAnEntry) {
    orva::testing::StoreEnv env;
    env.append_appt(make_appt("03012026", "FIRST"));
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t reader = ::fork();
    ASSERT_GE(reader, 0);
    if (reader == 0) {
        // Reads March over and over, each time on a fresh connection, until
        // it is stopped; says so after the first read.
        for (bool first = true;; first = false) {
            Shared r;
            r.app_path = env.dir.path();
            const bool read = load_appts(r, QDate(2026, 3, 15), env.cal, 0) == 0;
            if (first && (::write(ready[1], read ? "y" : "n", 1) != 1 || !read)) ::_exit(1);
        }
    }
    char first_read = 0;
    ASSERT_EQ(::read(ready[0], &first_read, 1), 1);
    EXPECT_EQ(first_read, 'y') << "the reader could read";
    for (int i = 0; i < 200; ++i)
        env.append_appt(
            make_appt(QStringLiteral("03%1").arg(1 + i % 28, 2, 10, QLatin1Char('0')) + "2026",
                      QStringLiteral("W%1").arg(i)));
    ::kill(reader, SIGKILL);
    int status = 0;
    ::waitpid(reader, &status, 0);
    ::close(ready[0]);
    ::close(ready[1]);

    Shared fresh;
    fresh.app_path = env.dir.path();
    ASSERT_EQ(load_appts(fresh, QDate(2026, 3, 15), env.cal, 0), 0);
    EXPECT_EQ(fresh.appt_count, 201);
    EXPECT_EQ(env.loose_files(), QStringList());
}

#include "Tools/ProgressBar.h"

#include <gtest/gtest.h>

#include <string>

#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

using orvapp::ProgressBar;
using std::chrono::hours;
using std::chrono::milliseconds;

namespace {

/// Two ends: what is written to the one is read from the other.
class Line {
public:
    static Line terminal() {
        Line line;
        openpty(&line.m_readEnd, &line.m_writeEnd, nullptr, nullptr, nullptr);
        return line;
    }

    static Line pipe() {
        Line line;
        int ends[2];
        if (::pipe(ends) == 0) {
            line.m_readEnd = ends[0];
            line.m_writeEnd = ends[1];
        }
        return line;
    }

    ~Line() {
        close(m_readEnd);
        close(m_writeEnd);
    }

    int writeEnd() const {
        return m_writeEnd;
    }

    /// What has been written since the last take().
    std::string take() const {
        fcntl(m_readEnd, F_SETFL, O_NONBLOCK);
        char buffer[4096];
        const ssize_t count = read(m_readEnd, buffer, sizeof buffer);
        return count > 0 ? std::string(buffer, std::size_t(count)) : "";
    }

private:
    int m_readEnd = -1;
    int m_writeEnd = -1;
};

} // namespace

TEST(ProgressBar, DrawsAndErasesItselfOnATerminal) {
    const Line line = Line::terminal();
    {
        ProgressBar bar("Reading DISP", line.writeEnd(), milliseconds(0));
        bar.setPercent(0);
        EXPECT_EQ(line.take(), "\r\x1b[KReading DISP [..............................]   0 %");
        bar.setPercent(50);
        EXPECT_EQ(line.take(), "\r\x1b[KReading DISP [###############...............]  50 %");
        bar.setPercent(100);
        EXPECT_EQ(line.take(), "\r\x1b[KReading DISP [##############################] 100 %");
    }
    EXPECT_EQ(line.take(), "\r\x1b[K");
}

TEST(ProgressBar, DrawsAPercentOnlyOnce) {
    const Line line = Line::terminal();
    ProgressBar bar("x", line.writeEnd(), milliseconds(0));
    bar.setPercent(7);
    EXPECT_NE(line.take(), "");
    bar.setPercent(7);
    EXPECT_EQ(line.take(), "");
}

TEST(ProgressBar, StaysAwayFromShortWork) {
    const Line line = Line::terminal();
    {
        ProgressBar bar("x", line.writeEnd(), hours(1));
        bar.setPercent(50);
    }
    EXPECT_EQ(line.take(), "");
}

TEST(ProgressBar, StaysAwayFromWhatIsNoTerminal) {
    const Line line = Line::pipe();
    {
        ProgressBar bar("x", line.writeEnd(), milliseconds(0));
        bar.setPercent(50);
    }
    EXPECT_EQ(line.take(), "");
}

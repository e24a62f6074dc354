#pragma once

#include "LibCore/rvfExport.h"

namespace orv::ug {

class Progress;

/// Tells a Progress how far work has come whose steps have steps of their own, such as a load that reads result after
/// result, each block by block. Percents rise and each is told once, up to 99 until the work is finished.
class ORV_API ProgressMeter {
public:
    /// Who is told, from the next percent on; null, as at first, for nobody. Not owned.
    void setProgress(Progress* progress);
    Progress* progress() const;

    /// How far the step that goes on has come, from 0 to 1. Costs next to nothing, and nothing happens without work.
    void tell(double fraction);

    /// Work while this lives. Within other work it is a part of that.
    class ORV_API Work {
    public:
        explicit Work(ProgressMeter* meter);
        ~Work();

        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

        /// Tells that all is done: 100.
        void finish();

    private:
        ProgressMeter* m_meter; ///< Null within other work.
    };

    /// A step of the one that goes on, while this lives: from one fraction of it to another.
    class ORV_API Step {
    public:
        /// @param meter null for nobody
        Step(ProgressMeter* meter, double from, double to);
        ~Step();

        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        ProgressMeter* m_meter;
        double m_outerBegin = 0.0;
        double m_outerEnd = 0.0;
    };

private:
    Progress* m_progress = nullptr;
    bool m_isAtWork = false;
    double m_begin = 0.0; ///< Of the step that goes on, as a fraction of all.
    double m_end = 1.0;
    int m_percent = -1; ///< The last one that was told.
};

} // namespace orv::ug

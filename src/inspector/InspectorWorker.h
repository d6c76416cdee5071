#pragma once

#include "inspector/AnalysisWorker.h"
#include "inspector/InspectorRequest.h"
#include "inspector/InspectorRows.h"

#include <string>

namespace tlm {

// One inspector request as the worker gets it: the snapshot with the localised unavailable text,
// looked up on the user interface thread.
struct InspectorJob {
    InspectorRequest request;
    std::u16string unavailableText;
};

using InspectorWorker = AnalysisWorker<InspectorJob, std::u16string>;

inline std::vector<std::u16string> ComputeInspectorJob(const InspectorJob& job)
{
    return BuildInspectorRows(job.request, job.unavailableText);
}

} // namespace tlm

#pragma once

#include "inspector/AnalysisWorker.h"
#include "structview/StructEvalRequest.h"
#include "structview/StructRow.h"
#include "structview/StructRows.h"

namespace tlm {

// The worker behind the struct view: it turns a snapshot at the caret into the entry struct's rows.
using StructWorker = AnalysisWorker<StructEvalRequest, StructRow>;

inline std::vector<StructRow> ComputeStructJob(const StructEvalRequest& request)
{
    return BuildStructRows(request);
}

} // namespace tlm

#pragma once

namespace simulator {

/* No boxes, no answers, the normal cursor. */
void ResetUser();

/* Reports answers that were not needed and a wait cursor that was left on. */
void ReportUser();

}  // namespace simulator

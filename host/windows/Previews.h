// The previews of what panels report and draw, with the context's patient and user on each page.
#pragma once

namespace health {

class ClinicalContext;
class Printout;
struct Report;

// Both return when the user closes the preview.
void previewReport(ClinicalContext& context, const Report& report);
void previewPages(ClinicalContext& context, Printout& printout);

}

#pragma once

#include "inquiryproblem.h"

/// Why an inquiry found nothing, as a sentence for people; empty where there is no problem.
QString inquiryProblemText(const InquiryProblem &problem);

#pragma once

#include "wire/LLMProvider.h"

/// The forms of the librarian's answers, ready to be sent with a request.
namespace pobblewig::LibrarianSchemas {

LLMResponseFormat extraction();
LLMResponseFormat meetingNotesExtraction();
LLMResponseFormat dailyCloseout();
LLMResponseFormat weeklyRollup();
LLMResponseFormat cleanup();

} // namespace pobblewig::LibrarianSchemas

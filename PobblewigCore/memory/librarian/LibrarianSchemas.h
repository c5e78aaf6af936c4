#pragma once

#include "wire/LLMProvider.h"

/// The response formats of the librarian's requests.
namespace pobblewig::LibrarianSchemas {

LLMResponseFormat extraction();
LLMResponseFormat meetingNotesExtraction();
LLMResponseFormat dailyCloseout();
LLMResponseFormat weeklyRollup();
LLMResponseFormat cleanup();

} // namespace pobblewig::LibrarianSchemas

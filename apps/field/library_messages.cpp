#include "apps/field/library_messages.h"

#include <utility>

namespace tiltpole::field {
namespace {

// By thread, so that a message is found by whoever ran the operation that gave it.
thread_local std::vector<std::wstring> messages_of_thread;

}  // namespace

LibraryMessages::LibraryMessages()
    : previous_(SetMessageBoxHandler([](const std::wstring& text, const std::wstring&,
                                        MessageIcon) { messages_of_thread.push_back(text); })) {}

LibraryMessages::~LibraryMessages() { SetMessageBoxHandler(std::move(previous_)); }

std::vector<std::wstring> TakeLibraryMessages() { return std::exchange(messages_of_thread, {}); }

}  // namespace tiltpole::field

#include "midi/ports/JackLibrary.h"

#include <dlfcn.h>

JackLibrary::JackLibrary()
{
    // Stays loaded: it keeps objects of its own until the process ends, and threads that may still return into it.
    auto* const library = dlopen ("libjack.so.0", RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);
    isComplete = library != nullptr;
    const auto find = [this, library] (auto& function, const char* name)
    {
        function =
            library == nullptr
                ? nullptr
                : reinterpret_cast<std::remove_reference_t<decltype (function)>> (dlsym (library, name));
        isComplete = isComplete && function != nullptr;
    };
    find (client_open, "jack_client_open");
    find (client_close, "jack_client_close");
    find (activate, "jack_activate");
    find (deactivate, "jack_deactivate");
    find (set_process_callback, "jack_set_process_callback");
    find (set_port_registration_callback, "jack_set_port_registration_callback");
    find (on_shutdown, "jack_on_shutdown");
    find (set_error_function, "jack_set_error_function");
    find (set_info_function, "jack_set_info_function");
    find (get_ports, "jack_get_ports");
    find (free, "jack_free");
    find (port_register, "jack_port_register");
    find (port_unregister, "jack_port_unregister");
    find (port_by_id, "jack_port_by_id");
    find (port_by_name, "jack_port_by_name");
    find (port_name, "jack_port_name");
    find (port_is_mine, "jack_port_is_mine");
    find (port_get_aliases, "jack_port_get_aliases");
    find (port_name_size, "jack_port_name_size");
    find (connect, "jack_connect");
    find (port_get_buffer, "jack_port_get_buffer");
    find (midi_get_event_count, "jack_midi_get_event_count");
    find (midi_event_get, "jack_midi_event_get");
    find (midi_clear_buffer, "jack_midi_clear_buffer");
    find (midi_event_reserve, "jack_midi_event_reserve");
}

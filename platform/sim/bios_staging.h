// The simulated BIOS agent's staging: the image at /tmp/bios_rom, written
// at the next host reset while /nv/OnReset_Update and /nv/pending_task.ini
// (the task that waits for it) are in place.
#pragma once

namespace platform::sim {

// Removes the records and image of a staging whose task has ended (its
// stager was killed before the task went Pending). Called by the holder of
// the firmware-update lock.
void drop_void_bios_staging();

// As the host starts (power on, reset, a cycle's power coming back):
// writes the image staged for the reset, ends its task as Completed or
// Exception, logs the outcome, removes the staging and frees the
// firmware-update lock. A void staging is only removed.
void apply_bios_staged_for_reset();

}  // namespace platform::sim

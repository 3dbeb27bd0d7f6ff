#pragma once

/** True if windows can be opened: the X server that the environment names answers. Asked before anything of the toolkit
    is made, which would not survive the lack of one. */
bool isDisplayReachable();

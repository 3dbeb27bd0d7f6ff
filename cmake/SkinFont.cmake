# The typeface of the interface, one file of a Debian package.

find_file (PX_SKIN_FONT Roboto-Bold.ttf
    PATHS /usr/share/fonts/truetype/roboto/unhinted/RobotoTTF
    NO_DEFAULT_PATH REQUIRED)

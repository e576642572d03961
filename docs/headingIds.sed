# Gives the headings of a page the names under which other pages link to them: lower case, no
# punctuation, dashes for blanks. Pages stay readable elsewhere, and the manual knows the names.
/^## / {
    h
    s/^## //
    s/[^A-Za-z0-9 _-]//g
    s/.*/\L&/
    s/ /-/g
    s/.*/ {#&}/
    H
    x
    s/\n//
}

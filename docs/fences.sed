# The name of the file that a program of a page goes into is no business of Doxygen.
s/^(```[a-z]+) [a-z_.]+$/\1/

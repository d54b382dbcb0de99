# What is printed at the breakpoint of debuggee.cpp, one line each.
set print elements 30
print exception
print hostError
print buffer
print none
up
print plain
print escaped
print empty
print pinned
print longText
print reference
print null
print wild
print released
print calendar
print midnight
print afternoon
print *(DTime*)&calendar.lastJulian
print object
print &object
print hostError

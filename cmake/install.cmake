# What a package of the program holds: filled from packaging/.
install(TARGETS vantrel RUNTIME DESTINATION bin)

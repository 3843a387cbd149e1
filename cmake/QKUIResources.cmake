# Filled by its module.

# Sources of host/controls.
target_sources(goodsbookhost PRIVATE
)

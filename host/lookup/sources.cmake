# Sources of host/lookup.
target_sources(goodsbookhost PRIVATE
)

# Sources of host/forms.
target_sources(goodsbookhost PRIVATE
)
